// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a screen reader says of the two windows and where the Tab key leads in them.
#include "tests/ui/drop_window_objects.h"
#include "tests/ui/history/history_window.h"
#include "ui/dropzone/drop_zone.h"
#include "ui/settings/preferences_view.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

namespace lumora {
namespace {

// A picker tells its value as its name; its own name and that of the label beside it go before.
QString spoken(QWidget& control, QAccessible::Text kind)
{
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(&control);
    if (!accessible) return {};
    if (kind != QAccessible::Name) return accessible->text(kind);
    if (!control.accessibleName().isEmpty()) return control.accessibleName();
    const auto labels = accessible->relations(QAccessible::Label);
    return labels.isEmpty() ? accessible->text(kind) : labels.first().first->text(kind);
}

// The names of the controls that Tab reaches, from the first.
QStringList walkByTab(QWidget& window)
{
    QStringList names;
    QWidget* first = nullptr;
    for (;;) {
        QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, Qt::Key_Tab);
        QWidget* control = window.focusWidget();
        if (!control || control == first || names.size() > 50) return names;
        if (!first) first = control;
        names << spoken(*control, QAccessible::Name);
    }
}

void expectEveryControlToBeNamedAndExplained(QWidget& window, int moreThan = 8)
{
    int controls = 0;
    for (QWidget* control : window.findChildren<QWidget*>()) {
        const bool isControl =
            control->focusPolicy() & Qt::TabFocus || qobject_cast<QAbstractButton*>(control);
        if (!isControl || !control->isVisibleTo(&window)) continue;
        ++controls;
        const QString name = spoken(*control, QAccessible::Name);
        EXPECT_FALSE(name.isEmpty()) << control->metaObject()->className();
        EXPECT_FALSE(spoken(*control, QAccessible::Description).isEmpty()) << name.toStdString();
    }
    EXPECT_GT(controls, moreThan);
}

QStringList words(std::initializer_list<const char*> texts)
{
    QStringList list;
    for (const char* text : texts)
        list << QString::fromUtf8(text);
    return list;
}

class Accessibility : public testing::Test
{
protected:
    static void open(QWidget& window)
    {
        window.show();
        window.activateWindow();
        QCoreApplication::processEvents();
    }

    test::DropWindowObjects objects;
};

TEST_F(Accessibility, TabWalksTheDropWindowInReadingOrder)
{
    const auto view = objects.makeView();
    open(*view);
    EXPECT_EQ(walkByTab(*view),
              words({"Next to the originals, originals kept", "WebP Lossy", "2560px", "Quality 82",
                     "Remove metadata, metadata removal on", "sRGB, color optimization on", "Preferences",
                     "Choose images", "Crafted with care by Tidewell", "Buy me a coffee"}));
}

TEST_F(Accessibility, TabReachesTheCancelControlAndTheResultsWhereTheyShow)
{
    const auto view = objects.makeView();
    objects.runUntil(2, 4);
    open(*view);
    const QStringList names = walkByTab(*view);
    EXPECT_EQ(names.mid(7, 6), words({"Choose images", "Batch menu", "Cancel", "Sort by, Newest",
                                      "Clear results", "Results"}));
}

TEST_F(Accessibility, TabWalksThePreferencesFromTopToBottom)
{
    objects.settings.destinationMode.set(DestinationMode::selectedFolder);
    objects.record(2, 1);
    PreferencesView view(objects.settings, objects.stats);
    open(view);
    EXPECT_EQ(walkByTab(view), words({"Format",
                                      "Quality",
                                      "Size",
                                      "Maximum",
                                      "Optimize color for sharing",
                                      "Remove color management information",
                                      "Remove personal information and metadata",
                                      "Destination",
                                      "Choose Folder...",
                                      "Prefix",
                                      "Suffix",
                                      "Move original to Trash",
                                      "Preserve file modification time",
                                      "Show warning before overwrite",
                                      "Exit when optimization complete",
                                      "Quit when the last window is closed",
                                      "Reset Lifetime Stats",
                                      "Remember what was done",
                                      "Move replaced files to Trash",
                                      "Skip files that were optimized before",
                                      "Write smaller files only",
                                      "Keep folders in the chosen folder",
                                      "Forget What Was Done"}));
}

TEST_F(Accessibility, EveryControlOfTheDropWindowIsNamedAndExplained)
{
    const auto view = objects.makeView();
    objects.runUntil(1, 4);
    open(*view);
    expectEveryControlToBeNamedAndExplained(*view);
}

TEST_F(Accessibility, EveryControlOfThePreferencesIsNamedAndExplained)
{
    PreferencesView view(objects.settings, objects.stats);
    open(view);
    expectEveryControlToBeNamedAndExplained(view);
}

TEST_F(Accessibility, NoControlIsMarkedBeforeTheKeyboardIsUsed)
{
    const auto view = objects.makeView();
    open(*view);
    EXPECT_EQ(view->focusWidget(), view.get());
    PreferencesView preferences(objects.settings, objects.stats);
    open(preferences);
    EXPECT_EQ(preferences.focusWidget(), &preferences);
}

TEST_F(Accessibility, AToggleAmongTheChipsSpeaksItsState)
{
    const auto view = objects.makeView();
    const auto chip = [&view](const QString& name) -> QAbstractButton* {
        for (auto* button : view->findChildren<QAbstractButton*>()) {
            if (button->accessibleName() == name) return button;
        }
        return nullptr;
    };
    QAbstractButton* metadata = chip(QStringLiteral("Remove metadata, metadata removal on"));
    ASSERT_TRUE(metadata);
    const auto state = [metadata] { return QAccessible::queryAccessibleInterface(metadata)->state(); };
    EXPECT_TRUE(state().checkable && state().checked);
    metadata->click();
    EXPECT_FALSE(state().checked);
    EXPECT_EQ(metadata->accessibleName(), QStringLiteral("Keep metadata, metadata removal off"));
    objects.settings.removeMetadata.set(true);
    EXPECT_TRUE(state().checked);
}

TEST_F(Accessibility, TheDropZoneSpeaksItsStatus)
{
    const auto view = objects.makeView();
    objects.addSuccess("/photos/a.jpg", 2, 1, "Optimized");
    EXPECT_EQ(spoken(*view->findChild<DropZone*>(), QAccessible::Description),
              QStringLiteral("Done. Drop image files or folders here, or onto the Lumora Dock icon."));
}

class HistoryAccessibility : public testing::Test, protected test::HistoryWindow
{
protected:
    void SetUp() override
    {
        add({written("/photos/a.jpg")});
        open();
    }
};

TEST_F(HistoryAccessibility, TabWalksTheHistoryInReadingOrder)
{
    EXPECT_EQ(view->focusWidget(), view.get());
    fileList().setCurrentIndex(files().index(0));
    EXPECT_EQ(walkByTab(*view), words({"Search by name", "Show, All Files", "Batches", "Undo Batch", "Files",
                                       "Show in Folder", "Compare", "Undo files"}));
}

TEST_F(HistoryAccessibility, EveryControlOfTheHistoryIsNamedAndExplained)
{
    expectEveryControlToBeNamedAndExplained(*view, 7);
}

} // namespace
} // namespace lumora
