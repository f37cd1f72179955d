// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The progress of a batch on the application's icon in the task bar, for the desktops that listen to the
// LauncherEntry signal. Main thread.
#pragma once

#include <QDBusConnection>
#include <QObject>

namespace lumora {

class ProcessingModel;

class LauncherProgress : public QObject
{
public:
    // Follows the model, which outlives this object.
    LauncherProgress(QDBusConnection bus, const ProcessingModel& model, QObject* parent = nullptr);
    // A bar must not outlive the program.
    ~LauncherProgress() override;

private:
    void update();
    void send(bool visible, double progress);

    QDBusConnection m_bus;
    const ProcessingModel& m_model;
    bool m_isVisible = false;
};

} // namespace lumora
