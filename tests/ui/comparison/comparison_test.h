// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A comparison of pictures made for it, and what is to be seen in it.
#pragma once

#include "tests/support/sample_images.h"
#include "tests/ui/comparison/comparison_window.h"
#include "ui/comparison/picture_caption.h"
#include "ui/controls/chip_button.h"

#include <QTest>

#include <gtest/gtest.h>

#include <cstdlib>

namespace lumora::test {

class Comparison : public testing::Test, protected ComparisonWindow
{
protected:
    using path = std::filesystem::path;

    Comparison() { setenv("XDG_DATA_HOME", (folder() / "data").c_str(), 1); }

    path picture(const char* name, const Pixels& pixels, const SaveOptions& options = {})
    {
        save(folder() / name, pixels, options);
        return folder() / name;
    }
    path plain(const char* name, QSize size, std::vector<std::uint8_t> colour)
    {
        return picture(name, uniformPicture(size.width(), size.height(), std::move(colour)));
    }
    // A red original and a blue output of the same extent.
    void addRedAndBlue(QSize originalSize = {1600, 800}, QSize outputSize = {1600, 800})
    {
        const path source = plain("a.png", originalSize, {200, 0, 0});
        add(source, plain("a-out.png", outputSize, {0, 0, 200}));
    }

    QImage grab() { return canvas().grab().toImage(); }
    // What is in the middle of the height, at a part of the width.
    QColor colourAt(double part)
    {
        const QImage image = grab();
        return image.pixelColor(static_cast<int>(part * (image.width() - 1)), image.height() / 2 + 30);
    }
    QString colourNameAt(double part)
    {
        const QColor colour = colourAt(part);
        if (colour.red() > 150 && colour.blue() < 50) return QStringLiteral("red");
        if (colour.blue() > 150 && colour.red() < 50) return QStringLiteral("blue");
        return colour.name();
    }
    int lineX() { return static_cast<int>(canvas().split() * canvas().width()); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }
    QString captions()
    {
        QStringList texts;
        for (const PictureCaption* caption : view.findChildren<PictureCaption*>())
            texts << caption->accessibleName();
        return texts.join(u'\n');
    }
    ChipButton* chip(const char* symbol)
    {
        for (ChipButton* candidate : view.findChildren<ChipButton*>()) {
            if (candidate->systemName() == QLatin1String(symbol)) return candidate;
        }
        return nullptr;
    }
};

} // namespace lumora::test
