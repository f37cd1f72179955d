// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/instance/single_instance.h"

#include "app/instance/application_adaptor.h"
#include "app/instance/application_id.h"
#include "app/instance/hand_over.h"

#include <QDBusConnectionInterface>
#include <QDeadlineTimer>

#include <iostream>

namespace lumora {

SingleInstance::SingleInstance(QDBusConnection bus, QObject* parent) : QObject(parent), m_bus(std::move(bus))
{
    new ApplicationAdaptor({[this](const QByteArray& token) { Q_EMIT activated(token); },
                            [this](const QByteArray& token) { Q_EMIT preferencesRequested(token); },
                            [this](const std::vector<std::filesystem::path>& files) { Q_EMIT opened(files); },
                            [this] { return m_hasGivenUp; }},
                           *this, this);
}

SingleInstance::~SingleInstance()
{
    giveUp();
    if (m_bus.isConnected()) m_bus.unregisterObject(applicationObjectPath);
}

std::optional<LaunchRequest> SingleInstance::start(LaunchRequest request, Patience patience)
{
    if (!m_bus.isConnected()) return request;
    // The object comes first: whoever sees the name may call at once.
    m_bus.registerObject(applicationObjectPath, this, QDBusConnection::ExportAdaptors);
    HandOver handOver(m_bus, patience.reply);
    // The bus library's timers may fire a twentieth early: one reply waited for in vain uses up the time.
    const QDeadlineTimer deadline(patience.reply * 9 / 10);
    for (int attempt = 0; attempt < patience.attempts; ++attempt) {
        if (takeName()) return request;
        if (handOver.deliver(request)) return std::nullopt;
        if (deadline.hasExpired()) break;
    }
    std::cerr << "lumora: the running program does not answer; this launch goes on by itself\n";
    return request;
}

bool SingleInstance::takeName()
{
    const auto reply =
        m_bus.interface()->registerService(applicationId, QDBusConnectionInterface::DontQueueService,
                                           QDBusConnectionInterface::DontAllowReplacement);
    m_ownsName = reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
    return m_ownsName;
}

void SingleInstance::giveUp()
{
    m_hasGivenUp = true;
    if (m_ownsName && m_bus.isConnected()) m_bus.interface()->unregisterService(applicationId);
    m_ownsName = false;
}

} // namespace lumora
