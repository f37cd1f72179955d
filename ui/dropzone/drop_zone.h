// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The dashed field that takes files: dropped on it, or chosen after a click, Space or Return. Shows what the
// processing model does; while a batch runs, also how far it is, how long it will take, and its controls.
#pragma once

#include "model/batch_pace.h"

#include <QAbstractButton>
#include <QTimer>
#include <QVariantAnimation>

#include <functional>

class QMimeData;

namespace lumora {

class BatchControls;
class ProcessingModel;

class DropZone : public QAbstractButton
{
    Q_OBJECT

public:
    // The height that the zone has at least where there is room.
    static constexpr int usualHeight = 170;

    // The model must outlive the zone. `reducesMotion` is asked whenever the icon is about to turn.
    DropZone(ProcessingModel& processing, std::function<bool()> reducesMotion, QWidget* parent = nullptr);

    // True while a drag that the zone accepts hovers over it.
    bool isTargeted() const { return m_isTargeted; }
    QString iconName() const;
    bool isTurning() const { return m_turning.state() == QAbstractAnimation::Running; }
    // A batch runs, which cancel() ends after the files in work, and at once when it is called again.
    bool isBusy() const;
    void cancel();
    // A drag that the zone, or the window around it, would take hovers.
    void setTargeted(bool targeted);
    // The done part of the running batch, 0 to 1.
    double progress() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void dropped(const QMimeData& data);

protected:
    bool event(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();
    void turnIfAsked();
    QString secondLine() const;
    QString timeLeft() const;
    void followPace();
    void placeControls();

    ProcessingModel& m_processing;
    const std::function<bool()> m_reducesMotion;
    BatchControls* m_controls;
    QVariantAnimation m_turning;
    BatchPace m_pace;
    QTimer m_clock; // what is said of the time left gets old
    bool m_isTargeted = false;
};

} // namespace lumora
