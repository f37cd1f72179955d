// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The drop window grows with the results: its height follows their number, its upper edge and its width stay.
// Main thread.
#pragma once

#include <QObject>
#include <QTimer>
#include <QVariantAnimation>

#include <functional>

class QWidget;

namespace lumora {

class ProcessingModel;

// 360 without results, else room for one to eight rows of the present text scale; in logical pixels.
int mainWindowHeight(int resultCount);

class MainWindowHeight : public QObject
{
public:
    using ReducesMotion = std::function<bool()>;

    // Follows the model at once; window and model outlive this object.
    MainWindowHeight(QWidget& window, const ProcessingModel& model, ReducesMotion reducesMotion,
                     QObject* parent = nullptr);

    // Resizes the window to the height for so many results, cut to the screen's free area, when it is off by
    // more than one pixel. The window moves up only where the screen has no room below. A minimised or zoomed
    // window gets its height when it is back.
    void resizeFor(int resultCount);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isOutOfReach() const;
    int targetHeight() const;
    void grow();
    void setHeight(int height);

    QWidget& m_window;
    const ReducesMotion m_reducesMotion;
    QVariantAnimation m_animation;
    QTimer m_settled; // after the return of a window whose height is due
    int m_resultCount = 0;
    bool m_isDue = false;
};

} // namespace lumora
