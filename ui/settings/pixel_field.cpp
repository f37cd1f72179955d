// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/pixel_field.h"

#include "ui/settings/step_button.h"
#include "ui/theme/fonts.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLocale>

#include <algorithm>
#include <optional>

namespace lumora {
namespace {

constexpr std::int64_t smallest = 64;
constexpr std::int64_t largest = 12000;
constexpr std::int64_t stepSize = 64;
constexpr int fieldWidth = 90;

// Plain digits, or the number as the user's locale writes it.
std::optional<std::int64_t> parse(const QString& typed)
{
    bool valid = false;
    qlonglong number = typed.trimmed().toLongLong(&valid);
    if (!valid) number = QLocale().toLongLong(typed.trimmed(), &valid);
    return valid ? std::optional<std::int64_t>(number) : std::nullopt;
}

} // namespace

PixelField::PixelField(LumoraSettings& settings, SettingValue<std::int64_t>& setting, const QString& name)
    : m_setting(setting), m_field(new QLineEdit), m_up(new StepButton(1)), m_down(new StepButton(-1))
{
    m_field->setPlaceholderText(QStringLiteral("Pixels"));
    m_field->setAccessibleName(name);
    m_field->setAccessibleDescription(QStringLiteral("Up and Down change it by 64"));
    m_field->setFixedWidth(fonts::scaled(fieldWidth));
    m_field->installEventFilter(this);
    m_up->setAccessibleName(QStringLiteral("Increase %1").arg(name));
    m_down->setAccessibleName(QStringLiteral("Decrease %1").arg(name));
    m_up->setAccessibleDescription(QStringLiteral("Makes it larger by 64"));
    m_down->setAccessibleDescription(QStringLiteral("Makes it smaller by 64"));

    auto* halves = new QVBoxLayout;
    halves->setSpacing(0);
    halves->addWidget(m_up);
    halves->addWidget(m_down);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(m_field);
    row->addLayout(halves);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusProxy(m_field);

    connect(m_up, &QAbstractButton::clicked, this, [this] { step(1); });
    connect(m_down, &QAbstractButton::clicked, this, [this] { step(-1); });
    connect(m_field, &QLineEdit::editingFinished, this, &PixelField::takeTyped);
    followSettings(settings, {setting.key()}, this, [this] { refresh(); });
}

void PixelField::step(int direction)
{
    takeTyped();
    const std::int64_t now = std::clamp(m_setting(), smallest - stepSize, largest + stepSize);
    if (direction > 0 ? now >= largest : now <= smallest) return;
    m_setting.set(std::clamp(now + direction * stepSize, smallest, largest));
}

void PixelField::refresh()
{
    m_field->setText(QString::number(m_setting()));
    m_up->setEnabled(m_setting() < largest);
    m_down->setEnabled(m_setting() > smallest);
}

void PixelField::takeTyped()
{
    if (const std::optional<std::int64_t> number = parse(m_field->text())) m_setting.set(*number);
    refresh();
}

bool PixelField::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) m_field->setFixedWidth(fonts::scaled(fieldWidth));
    return QWidget::event(event);
}

bool PixelField::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_field && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            step(key == Qt::Key_Up ? 1 : -1);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace lumora
