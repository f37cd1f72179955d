// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One running program for each session: the first one owns the name on the session bus, later launches hand
// their files to it and end. Desktops reach the owner the same way, through org.freedesktop.Application.
//
// Main thread only. Without a bus every launch is a first one.
#pragma once

#include "app/instance/launch_request.h"

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>

#include <chrono>
#include <filesystem>
#include <optional>
#include <vector>

namespace lumora {

// The context lets the adaptor refuse a call.
class SingleInstance : public QObject, public QDBusContext
{
    Q_OBJECT

public:
    struct Patience
    {
        std::chrono::milliseconds reply{3000}; // for the owner to acknowledge one message
        int attempts = 5;                      // to take the name or to be acknowledged, while time is left
    };

    explicit SingleInstance(QDBusConnection bus, QObject* parent = nullptr);
    ~SingleInstance() override;

    // Becomes the owner, or hands the request over. Absent: all of it was acknowledged, this launch may end.
    // Else the caller goes on as the running program with what is left of the request. An owner that never
    // answers is given up on with a word on standard error, so that no file is lost; blocks until then. A
    // message that was acknowledged too late is sent twice.
    [[nodiscard]] std::optional<LaunchRequest> start(LaunchRequest request, Patience patience);
    [[nodiscard]] std::optional<LaunchRequest> start(LaunchRequest request)
    {
        return start(std::move(request), Patience());
    }

    // Before the end of the program: the name is free at once, and what still arrives is refused, so that its
    // sender tries again and reaches the next owner.
    void giveUp();

Q_SIGNALS:
    // `token` is the launcher's leave to raise a window (activation token or startup id); it may be empty.
    void activated(const QByteArray& token);
    void preferencesRequested(const QByteArray& token);
    void opened(const std::vector<std::filesystem::path>& files);

private:
    bool takeName();

    QDBusConnection m_bus;
    bool m_ownsName = false;
    bool m_hasGivenUp = false;
};

} // namespace lumora
