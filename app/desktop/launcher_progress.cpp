// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/launcher_progress.h"

#include "app/instance/application_id.h"
#include "model/processing_model.h"

#include <QDBusMessage>
#include <QVariantMap>

namespace lumora {

LauncherProgress::LauncherProgress(QDBusConnection bus, const ProcessingModel& model, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_model(model)
{
    connect(&model, &ProcessingModel::isProcessingChanged, this, &LauncherProgress::update);
    connect(&model, &ProcessingModel::progressChanged, this, &LauncherProgress::update);
}

LauncherProgress::~LauncherProgress()
{
    if (m_isVisible) send(false, 0);
}

void LauncherProgress::update()
{
    const bool visible = m_model.isProcessing() && m_model.totalCount() > 0;
    if (!visible && !m_isVisible) return;
    m_isVisible = visible;
    send(visible, visible ? double(m_model.completedCount()) / m_model.totalCount() : 0);
}

void LauncherProgress::send(bool visible, double progress)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        applicationObjectPath, QStringLiteral("com.canonical.Unity.LauncherEntry"), QStringLiteral("Update"));
    signal << QStringLiteral("application://%1.desktop").arg(applicationId)
           << QVariantMap{{QStringLiteral("progress-visible"), visible},
                          {QStringLiteral("progress"), progress}};
    m_bus.send(signal);
}

} // namespace lumora
