// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/preferences_view.h"

#include "model/folder_bookmark.h"
#include "model/stats_store.h"
#include "platform/application_bundle.h"
#include "ui/button_styles.h"
#include "ui/fonts.h"
#include "ui/lifetime_stats_grid.h"
#include "ui/pixel_field.h"
#include "ui/preference_section.h"
#include "ui/setting_controls.h"
#include "ui/styled_button.h"
#include "ui/styled_label.h"
#include "ui/surfaces.h"
#include "ui/tidewell_theme.h"

#include <QCheckBox>
#include <QEvent>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QPainter>
#include <QSlider>
#include <QVBoxLayout>

namespace lumora {
namespace {

const QuietButtonStyle quietStyle;
const DestructiveButtonStyle destructiveStyle;

std::optional<std::filesystem::path> askForFolder(QWidget* parent)
{
    const QString folder = QFileDialog::getExistingDirectory(parent, QStringLiteral("Choose Folder"));
    if (folder.isEmpty()) return std::nullopt;
    return std::filesystem::path(QFile::encodeName(folder).toStdString());
}

} // namespace

PreferencesView::PreferencesView(LumoraSettings& settings, StatsStore& stats, QWidget* parent)
    : PreferencesView(settings, stats, askForFolder, parent)
{
}

PreferencesView::PreferencesView(LumoraSettings& settings, StatsStore& stats, FolderChooser chooser,
                                 QWidget* parent)
    : QScrollArea(parent), m_settings(settings), m_stats(stats), m_chooser(std::move(chooser))
{
    setMinimumSize(620, 780);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    auto* content = new QWidget;
    auto* stack = new QVBoxLayout(content);
    stack->setContentsMargins(22, 42, 22, 30);
    stack->setSpacing(14);
    stack->addWidget(makeHeader());
    stack->addWidget(makeOutput());
    stack->addWidget(makeOptimization());
    stack->addWidget(makeDestination());
    stack->addWidget(makeMiscellaneous());
    stack->addWidget(makeLifetimeStats());
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

QWidget* PreferencesView::makeHeader() const
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
        appVersionText(mainBundleURL()),
        [] { return fonts::font(fonts::TextStyle::caption2, QFont::DemiBold); }, creamMuted()));
    return header;
}

QWidget* PreferencesView::makeQualityRow()
{
    auto* control = new QWidget;
    control->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* value = new FiguresLabel(
        QString(), [] { return fonts::systemFont(13, QFont::Normal); }, TidewellTheme::ink());
    value->setTrailingColumn(34);
    auto* slider = makeQualitySlider(m_settings);
    auto* row = new QHBoxLayout(control);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(slider, 1);
    row->addWidget(value);
    control->setFocusProxy(slider);
    followSettings(m_settings, {m_settings.quality.key()}, value,
                   [this, value] { value->setText(QString::number(wholeQuality(m_settings.quality()))); });
    auto* formRow = new FormRow(QStringLiteral("Quality"), control);
    followSettings(m_settings, {m_settings.outputFormat.key()}, formRow,
                   [this, formRow] { formRow->setEnabled(!isLosslessOnly(m_settings.outputFormat())); });
    return formRow;
}

PreferenceSection* PreferencesView::makeOutput()
{
    auto* section = new PreferenceSection(QStringLiteral("Output"));
    const QString format = QStringLiteral("Format");
    const QString size = QStringLiteral("Size");
    const QString maximum = QStringLiteral("Maximum");
    section->add(new FormRow(format, makePicker(m_settings, m_settings.outputFormat, format)));
    section->add(makeQualityRow());
    section->add(new FormRow(size, makePicker(m_settings, m_settings.resizeMode, size)));
    auto* bound = new FormRow(maximum, new PixelField(m_settings, m_settings.maximumPixels, maximum));
    followSettings(m_settings, {m_settings.resizeMode.key()}, bound,
                   [this, bound] { bound->setEnabled(m_settings.resizeMode() != ResizeMode::none); });
    section->add(bound);
    return section;
}

PreferenceSection* PreferencesView::makeOptimization()
{
    auto* section = new PreferenceSection(QStringLiteral("Optimization"));
    section->addLeading(makeToggle(m_settings, m_settings.optimizeColorForSharing,
                                   QStringLiteral("Optimize color for sharing")));
    section->addLeading(makeToggle(m_settings, m_settings.removeColorManagement,
                                   QStringLiteral("Remove color management information")));
    section->addLeading(makeToggle(m_settings, m_settings.removeMetadata,
                                   QStringLiteral("Remove personal information and metadata")));
    return section;
}

PreferenceSection* PreferencesView::makeDestination()
{
    auto* section = new PreferenceSection(QStringLiteral("Destination"));
    const QString destination = QStringLiteral("Destination");
    section->add(new FormRow(destination, makePicker(m_settings, m_settings.destinationMode, destination)));

    auto* choose = new StyledButton(quietStyle, QStringLiteral("folder"), QStringLiteral("Choose Folder..."));
    connect(choose, &QPushButton::clicked, this, &PreferencesView::chooseDestinationFolder);
    followSettings(m_settings, {m_settings.destinationMode.key()}, choose, [this, choose] {
        choose->setEnabled(m_settings.destinationMode() == DestinationMode::selectedFolder);
    });
    section->add(new FormRow(QStringLiteral("Folder"), choose));

    auto* names = new QWidget;
    names->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* row = new QHBoxLayout(names);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(makeNameField(m_settings, m_settings.filenamePrefix, QStringLiteral("Prefix")));
    row->addWidget(makeNameField(m_settings, m_settings.filenameSuffix, QStringLiteral("Suffix")));
    section->add(new FormRow(QStringLiteral("Filename"), names));
    return section;
}

PreferenceSection* PreferencesView::makeMiscellaneous()
{
    auto* section = new PreferenceSection(QStringLiteral("Miscellaneous"));
    section->addLeading(
        makeToggle(m_settings, m_settings.moveOriginalToTrash, QStringLiteral("Move original to Trash")));
    section->addLeading(makeToggle(m_settings, m_settings.preserveModificationTime,
                                   QStringLiteral("Preserve file modification time")));
    section->addLeading(makeToggle(m_settings, m_settings.warnBeforeOverwrite,
                                   QStringLiteral("Show warning before overwrite")));
    section->addLeading(makeToggle(m_settings, m_settings.exitWhenComplete,
                                   QStringLiteral("Exit when optimization complete")));
    return section;
}

PreferenceSection* PreferencesView::makeLifetimeStats()
{
    auto* section = new PreferenceSection(QStringLiteral("Lifetime Stats"));
    section->add(new LifetimeStatsGrid(m_stats));
    auto* reset = new StyledButton(destructiveStyle, QStringLiteral("arrow.counterclockwise"),
                                   QStringLiteral("Reset Lifetime Stats"));
    const auto refresh = [this, reset] { reset->setEnabled(m_stats.stats().filesProcessed != 0); };
    connect(reset, &QPushButton::clicked, &m_stats, &StatsStore::reset);
    connect(&m_stats, &StatsStore::statsChanged, reset, refresh);
    refresh();
    section->addLeading(reset);
    return section;
}

void PreferencesView::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), windowGradient(viewport()->rect(), layoutDirection()));
}

bool PreferencesView::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel) {
        event->ignore();
        return true;
    }
    return QScrollArea::eventFilter(watched, event);
}

} // namespace lumora
