// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The outcome of a platform call that can fail: a value, or an error with a text for
// people or, where callers tell failures apart, of a type of its own. Foreign errors
// (errno, a library's buffer, exceptions) become an Error in one function at each boundary, on the thread
// where they happened.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace lumora {

struct Error
{
    enum class Cause {
        unspecified,
        memory,
        inconvertible, // the thing is good, but cannot be had in this form
    };

    std::string description;
    Cause cause = Cause::unspecified;
    // Of the system, where the failure is its own: "No space left on device".
    std::string reason = std::string();
};

// What std::bad_alloc is called where it may not pass.
inline Error outOfMemory()
{
    return {"not enough memory", Error::Cause::memory};
}

template <class T, class E = Error>
class [[nodiscard]] Result
{
public:
    Result(T value) : m_state(std::move(value)) {}
    Result(E error) : m_state(std::move(error)) {}

    explicit operator bool() const { return m_state.index() == 0; }

    T& value() & { return std::get<0>(m_state); }
    const T& value() const& { return std::get<0>(m_state); }
    T&& value() && { return std::get<0>(std::move(m_state)); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }

    const E& error() const { return std::get<1>(m_state); }

private:
    std::variant<T, E> m_state;
};

struct Done
{
};

// The outcome of a call that has nothing to hand back.
using Status = Result<Done>;

} // namespace lumora
