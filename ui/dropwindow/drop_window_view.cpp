// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropwindow/drop_window_view.h"

#include "model/processing_model.h"
#include "ui/controls/styled_button.h"
#include "ui/controls/styled_label.h"
#include "ui/dropwindow/destination_hint.h"
#include "ui/dropwindow/drop_window_footer.h"
#include "ui/dropwindow/drop_window_heights.h"
#include "ui/dropzone/drop_zone.h"
#include "ui/dropzone/drop_zone_picture.h"
#include "ui/intake/file_intake.h"
#include "ui/intake/offered_files.h"
#include "ui/results/results_list.h"
#include "ui/settings/settings_chip_group.h"
#include "ui/statistics/lifetime_stats_strip.h"
#include "ui/theme/button_styles.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_logo_mark.h"
#include "ui/theme/tidewell_theme.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QShortcut>

namespace lumora {
namespace {

constexpr QMargins padding(22, 42, 22, 22);
constexpr int slimZone = 36;
const QuietButtonStyle quietStyle;

QFont titleFont()
{
    return fonts::font(fonts::TextStyle::title2, QFont::Bold);
}

} // namespace

DropWindowView::DropWindowView(LumoraSettings& settings, ProcessingModel& processingModel,
                               StatsStore& statsStore, std::function<void()> openPreferences,
                               FileBrowser fileBrowser, std::function<bool()> reducesMotion,
                               ChooseFiles chooseFiles, QWidget* parent)
    : QWidget(parent), m_process([&processingModel](const auto& files) { processingModel.process(files); }),
      m_intake(new FileIntake(QDBusConnection::sessionBus(), this)),
      m_header(makeHeader(settings, std::move(openPreferences))),
      m_zone(new DropZone(processingModel, std::move(reducesMotion), this)),
      m_results(new ResultsList(processingModel, std::move(fileBrowser), this)),
      m_strip(new LifetimeStatsStrip(statsStore, this)), m_footer(new DropWindowFooter(this))
{
    setMinimumSize(720, 320);
    setFocusPolicy(Qt::ClickFocus);
    setAcceptDrops(true);
    connect(m_zone, &DropZone::dropped, this,
            [this](const QMimeData& items) { m_intake->load(items, m_process); });
    connect(m_zone, &QAbstractButton::clicked, this, [this, choose = std::move(chooseFiles)] {
        choose(this, [this](std::vector<std::filesystem::path> files) {
            m_intake->load(std::move(files), m_process);
        });
    });
    connect(m_results, &ResultsList::compareRequested, this, &DropWindowView::compareRequested);
    auto* openKeys = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_O), this);
    connect(openKeys, &QShortcut::activated, m_zone, &QAbstractButton::click);
    auto* pasteKeys = new QShortcut(QKeySequence::Paste, this);
    connect(pasteKeys, &QShortcut::activated, this, &DropWindowView::paste);
}

QWidget* DropWindowView::makeHeader(LumoraSettings& settings, std::function<void()> openPreferences)
{
    auto* preferences = new StyledButton(quietStyle, QStringLiteral("gearshape"), QString());
    preferences->setToolTip(QStringLiteral("Preferences"));
    preferences->setAccessibleName(QStringLiteral("Preferences"));
    preferences->setAccessibleDescription(QStringLiteral("Opens the preferences window"));
    auto* hint = new DestinationHint(settings);
    connect(hint, &QAbstractButton::clicked, this, openPreferences);
    connect(preferences, &QAbstractButton::clicked, this, std::move(openPreferences));

    auto* titleAndHint = new QHBoxLayout;
    titleAndHint->setSpacing(8);
    titleAndHint->addWidget(new StyledLabel(QStringLiteral("Lumora"), titleFont, TidewellTheme::cream()));
    titleAndHint->addWidget(hint, 0, Qt::AlignBottom);
    titleAndHint->addStretch(1);
    auto* titleAndChips = new QVBoxLayout;
    titleAndChips->setSpacing(4);
    titleAndChips->addLayout(titleAndHint);
    titleAndChips->addWidget(new SettingsChipGroup(settings));

    auto* header = new QWidget(this);
    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addWidget(new TidewellLogoMark);
    row->addLayout(titleAndChips, 1);
    row->addWidget(preferences);
    return header;
}

void DropWindowView::paste()
{
    const QMimeData* copied = QGuiApplication::clipboard()->mimeData();
    if (copied && offersFiles(*copied)) m_intake->load(*copied, m_process);
}

bool DropWindowView::event(QEvent* event)
{
    const bool done = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) arrange();
    return done;
}

// Nothing is marked as focused before the keyboard is used.
void DropWindowView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!window()->focusWidget()) setFocus();
}

// A row that is let go beside the zone was not meant for it.
void DropWindowView::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->source() || !offersFiles(*event->mimeData())) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_zone->setTargeted(true);
}

void DropWindowView::dragMoveEvent(QDragMoveEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void DropWindowView::dragLeaveEvent(QDragLeaveEvent*)
{
    m_zone->setTargeted(false);
}

void DropWindowView::dropEvent(QDropEvent* event)
{
    m_zone->setTargeted(false);
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_intake->load(*event->mimeData(), m_process);
}

// What no control took, such as the zone that lets go of a press.
void DropWindowView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_zone->isBusy()) return m_zone->cancel();
    QWidget::keyPressEvent(event);
}

void DropWindowView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

void DropWindowView::arrange()
{
    const QRect inside = rect().marginsRemoved(padding);
    const int header = m_header->sizeHint().height();
    const int strip = m_strip->sizeHint().height();
    const int footer = m_footer->sizeHint().height();
    const bool hasResults = !m_results->isHidden();
    const DropWindowHeights heights =
        dropWindowHeights({.available = inside.height(),
                           .fixed = header + strip + footer,
                           .gaps = hasResults ? 4 : 3,
                           .leastZone = DropZonePicture::leastHeight(),
                           .slimZone = fonts::scaled(slimZone),
                           .results = hasResults ? m_results->sizeHint().height() : 0,
                           .leastResults = hasResults ? m_results->minimumSizeHint().height() : 0,
                           .strip = strip,
                           .footer = footer});
    m_strip->setVisible(heights.strip);
    m_footer->setVisible(heights.footer);
    int top = inside.top();
    const auto place = [&](QWidget* part, int height) {
        part->setGeometry(inside.left(), top, inside.width(), height);
        top += height + heights.spacing;
    };
    place(m_header, header);
    place(m_zone, heights.zone);
    if (hasResults) place(m_results, heights.results);
    if (heights.strip) place(m_strip, strip);
    if (heights.footer) place(m_footer, footer);
}

void DropWindowView::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), windowGradient(rect(), layoutDirection()));
}

} // namespace lumora
