// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The maker's mark, 46 by 46: the logo of the application directory, or a seal where that file is missing.
#pragma once

#include <QSvgRenderer>
#include <QWidget>

#include <filesystem>

namespace lumora {

class TidewellLogoMark : public QWidget
{
    Q_OBJECT

public:
    // Looks for Contents/Resources/TidewellLogo.svg in the bundle of the running program, or in the one
    // given.
    explicit TidewellLogoMark(QWidget* parent = nullptr);
    explicit TidewellLogoMark(const std::filesystem::path& bundle, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSvgRenderer m_logo;
};

} // namespace lumora
