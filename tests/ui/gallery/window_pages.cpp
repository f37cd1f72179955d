// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs of the application and its frame around a window.
#include "app/panels/about_panel.h"
#include "app/panels/closing_message.h"
#include "app/panels/folder_access_panel.h"
#include "app/panels/many_files_question.h"
#include "app/panels/overwrite_question.h"
#include "app/panels/quit_question.h"
#include "app/window/branded_window.h"
#include "tests/ui/drop_window_objects.h"
#include "tests/ui/gallery/gallery.h"
#include "ui/controls/styled_button.h"
#include "ui/settings/preferences_view.h"
#include "ui/settings/reset_question.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QTimer>

namespace lumora::gallery {
namespace {

// Writes the next dialog that opens, then closes it.
class DialogPicture
{
public:
    DialogPicture(const Gallery& gallery, QString name, Qt::LayoutDirection direction = Qt::LeftToRight)
        : m_gallery(gallery), m_name(std::move(name)), m_direction(direction)
    {
        m_timer.setInterval(10);
        QObject::connect(&m_timer, &QTimer::timeout, [this] { take(); });
        m_timer.start();
    }

private:
    void take()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* dialog = qobject_cast<QDialog*>(window);
            if (!dialog || !dialog->isVisible()) continue;
            m_timer.stop();
            dialog->setLayoutDirection(m_direction);
            m_gallery.save(*dialog, m_name);
            return dialog->reject();
        }
    }

    const Gallery& m_gallery;
    const QString m_name;
    const Qt::LayoutDirection m_direction;
    QTimer m_timer;
};

void dialogs(const Gallery& gallery)
{
    QAction quit;
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        const auto named = [direction](const char* name) {
            return QLatin1String(name) +
                   (direction == Qt::RightToLeft ? QStringLiteral("-right-to-left") : QString());
        };
        const auto take = [&](const char* name, auto open) {
            const DialogPicture picture(gallery, named(name), direction);
            open();
        };
        take("dialog-overwrite", [&] { askToOverwrite("/home/user/Pictures/beach.webp", nullptr, quit); });
        take("dialog-quit", [] { confirmQuit(nullptr); });
        take("dialog-reset", [] { confirmStatsReset(nullptr); });
        take("dialog-closing", [] { tellOfClosing(nullptr); });
        take("dialog-many-files", [] { confirmManyFiles(12'345, 214, nullptr); });
        AboutPanel about;
        about.setLayoutDirection(direction);
        gallery.save(about, named("dialog-about"));
    }
    const DialogPicture picture(gallery, QStringLiteral("dialog-folder"));
    requestSaveAccess("/usr/share", nullptr);
}

void frames(const Gallery& gallery)
{
    QMenu menu;
    test::DropWindowObjects objects;
    BrandedWindow window({QStringLiteral("Lumora"), QStringLiteral("main"), {820, 360}, {720, 320}},
                         objects.makeView().release(), menu);
    gallery.save(window, QStringLiteral("window-frame"));
    BrandedWindow preferences({QStringLiteral("Preferences"), QStringLiteral("p"), {620, 780}, {620, 780}},
                              new PreferencesView(objects.settings, objects.stats), menu);
    gallery.save(preferences, QStringLiteral("window-preferences"));
}

} // namespace

void windowPages(const Gallery& gallery)
{
    dialogs(gallery);
    frames(gallery);
}

} // namespace lumora::gallery
