// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/preferences_view.h"

#include "model/folder_bookmark.h"
#include "model/lumora_settings.h"
#include "system/bundle.h"
#include "ui/controls/styled_label.h"
#include "ui/intake/files_and_folders_dialog.h"
#include "ui/settings/preference_section.h"
#include "ui/settings/reset_question.h"
#include "ui/settings/settings_sections.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSlider>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int topPadding = 42;

std::optional<std::filesystem::path> askForFolder(QWidget* parent)
{
    QFileDialog panel(parent, QStringLiteral("Choose Folder"), QDir::homePath());
    panel.setFileMode(QFileDialog::Directory);
    panel.setOption(QFileDialog::ShowDirsOnly);
    makeRoomy(panel);
    if (panel.exec() != QDialog::Accepted || panel.selectedFiles().isEmpty()) return std::nullopt;
    return std::filesystem::path(QFile::encodeName(panel.selectedFiles().constFirst()).toStdString());
}

} // namespace

PreferencesView::PreferencesView(LumoraSettings& settings, StatsStore& stats, QWidget* parent)
    : PreferencesView(settings, stats, askForFolder, confirmStatsReset, parent)
{
}

PreferencesView::PreferencesView(LumoraSettings& settings, StatsStore& stats, FolderChooser chooser,
                                 Confirmation confirmReset, QWidget* parent)
    : QScrollArea(parent), m_settings(settings), m_chooser(std::move(chooser)),
      m_confirmReset(std::move(confirmReset))
{
    setMinimumSize(620, 780);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::ClickFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The window's controls lie in this strip: nothing scrolls under them.
    setViewportMargins(0, topPadding, 0, 0);
    auto* aboveScrollBar = new QWidget;
    aboveScrollBar->setFixedHeight(topPadding);
    addScrollBarWidget(aboveScrollBar, Qt::AlignTop);
    setWidgetResizable(true);
    auto* content = new QWidget;
    auto* stack = new QVBoxLayout(content);
    stack->setContentsMargins(22, 0, 22, 30);
    stack->setSpacing(14);
    stack->addWidget(makeHeader());
    stack->addWidget(makeOutputSection(settings));
    stack->addWidget(makeOptimizationSection(settings));
    stack->addWidget(makeDestinationSection(settings, [this] { chooseDestinationFolder(); }));
    stack->addWidget(makeMiscellaneousSection(settings));
    stack->addWidget(makeLifetimeStatsSection(stats, [this] { return m_confirmReset(window()); }));
    stack->addWidget(makeSafetySection(settings, [this] { Q_EMIT forgetRequested(); }));
    stack->addStretch();
    setWidget(content);
    content->setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    for (QComboBox* picker : findChildren<QComboBox*>())
        picker->installEventFilter(this);
    for (QSlider* slider : findChildren<QSlider*>())
        slider->installEventFilter(this);
}

QString PreferencesView::appVersionText(const std::filesystem::path& bundle)
{
    const auto read = [&](const char* key, const char* fallback) {
        return QString::fromStdString(infoDictionaryValue(bundle, key).value_or(fallback));
    };
    return QStringLiteral("Version %1 (%2)")
        .arg(read("CFBundleShortVersionString", "0.0"), read("CFBundleVersion", "0"));
}

void PreferencesView::chooseDestinationFolder()
{
    const std::optional<std::filesystem::path> folder = m_chooser(window());
    if (!folder) return;
    if (const std::optional<QByteArray> bookmark = folderBookmark(*folder)) {
        m_settings.destinationFolderBookmark.set(*bookmark);
    }
}

QWidget* PreferencesView::makeHeader()
{
    using namespace TidewellTheme;
    auto* header = new QWidget;
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    auto* titles = new QVBoxLayout;
    titles->setSpacing(4);
    titles->addWidget(new StyledLabel(
        QStringLiteral("Preferences"), [] { return fonts::font(fonts::TextStyle::title2, QFont::Bold); },
        cream()));
    titles->addWidget(new StyledLabel(
        QStringLiteral("Local image conversion defaults"),
        [] { return fonts::systemFont(13, QFont::Medium); }, creamMuted()));
    row->addLayout(titles);
    row->addStretch();
    row->addWidget(new StyledLabel(
        appVersionText(mainBundlePath()),
        [] { return fonts::font(fonts::TextStyle::caption2, QFont::DemiBold); }, creamMuted()));
    return header;
}

// Nothing is marked as focused before the keyboard is used.
void PreferencesView::showEvent(QShowEvent* event)
{
    QScrollArea::showEvent(event);
    if (!window()->focusWidget()) setFocus();
}

// The scroll area knows the other keys itself.
void PreferencesView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Home) return verticalScrollBar()->setValue(verticalScrollBar()->minimum());
    if (event->key() == Qt::Key_End) return verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    QScrollArea::keyPressEvent(event);
}

// Strip and viewport share one gradient.
bool PreferencesView::event(QEvent* event)
{
    if (event->type() != QEvent::Paint) return QScrollArea::event(event);
    QPainter(this).fillRect(rect(), windowGradient(rect(), layoutDirection()));
    return true;
}

void PreferencesView::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.translate(-viewport()->pos());
    painter.fillRect(rect(), windowGradient(rect(), layoutDirection()));
}

bool PreferencesView::eventFilter(QObject* watched, QEvent* event)
{
    const bool isControl = qobject_cast<QComboBox*>(watched) || qobject_cast<QSlider*>(watched);
    if (isControl && event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace lumora
