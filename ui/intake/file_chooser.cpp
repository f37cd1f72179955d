// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/file_chooser.h"

#include <QCursor>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>

namespace lumora {
namespace {

// The toolkit builds its own controls exactly where the platform theme has no panel.
bool platformHasPanel()
{
    const QFileDialog probe;
    return !probe.findChild<QLineEdit*>();
}

QString portalWindow(const QWidget& parent)
{
    if (QGuiApplication::platformName() != QLatin1String("xcb")) return {};
    return QStringLiteral("x11:%1").arg(parent.window()->winId(), 0, 16);
}

} // namespace

FileChooser::FileChooser(QDBusConnection bus, QObject* parent) : QObject(parent), m_bus(std::move(bus)) {}

void FileChooser::open(QWidget* parent, const ChosenFiles& chosen)
{
    findPortalChooser(m_bus, parent, [this, self = QPointer(this), parent, chosen](bool found) {
        if (!self) return;
        if (found)
            return offerKinds(parent,
                              [this, parent, chosen](ChosenKind kind) { openPortal(parent, kind, chosen); });
        if (platformHasPanel())
            return offerKinds(parent, [parent, chosen](ChosenKind kind) {
                choosePlatformFiles(parent, kind == ChosenKind::folders, chosen);
            });
        chooseFilesAndFolders(parent, chosen);
    });
}

void FileChooser::openPortal(QWidget* parent, ChosenKind kind, const ChosenFiles& chosen)
{
    chooseInPortal(m_bus, portalWindow(*parent), kind, parent,
                   [parent, chosen](const std::optional<std::vector<std::filesystem::path>>& files) {
                       if (!files) return chooseFilesAndFolders(parent, chosen);
                       if (!files->empty()) chosen(*files);
                   });
}

void FileChooser::offerKinds(QWidget* parent, const Choose& choose)
{
    auto* menu = new QMenu(parent);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(QStringLiteral("Choose images"));
    QAction* images =
        menu->addAction(QStringLiteral("Choose Images..."), parent, [choose] { choose(ChosenKind::images); });
    menu->addAction(QStringLiteral("Choose Folders..."), parent, [choose] { choose(ChosenKind::folders); });
    menu->setActiveAction(images);
    const QPoint middle = parent->mapToGlobal(parent->rect().center());
    menu->popup(parent->underMouse() ? QCursor::pos() : middle);
}

} // namespace lumora
