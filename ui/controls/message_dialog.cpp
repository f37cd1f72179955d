// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/message_dialog.h"

#include "ui/controls/styled_button.h"
#include "ui/controls/styled_label.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QApplication>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QPainter>
#include <QWindow>

#include <utility>

namespace lumora {
namespace {

using fonts::TextStyle;

constexpr int textWidth = 420;
constexpr int deafMilliseconds = 500;
constexpr QMargins padding(22, 22, 22, 18);

StyledLabel* line(TextStyle style, const QString& text, const QColor& colour)
{
    const QFont font = fonts::shapedFor(text, fonts::font(style));
    const int width = fonts::scaled(textWidth);
    auto* label = new StyledLabel(
        QFontMetrics(font).elidedText(text, Qt::ElideMiddle, width),
        [style, text] { return fonts::shapedFor(text, fonts::font(style)); }, colour);
    if (label->text() != text) label->setToolTip(text.toHtmlEscaped());
    label->setMinimumWidth(width);
    return label;
}

// All of it, in as many lines as it takes.
StyledLabel* paragraph(TextStyle style, const QString& text, const QColor& colour)
{
    const QFont font = fonts::shapedFor(text, fonts::font(style));
    const int width = fonts::scaled(textWidth);
    auto* label = new StyledLabel(
        text, [style, text] { return fonts::shapedFor(text, fonts::font(style)); }, colour);
    label->setWordWrap(true);
    const QRect lines =
        QFontMetrics(font).boundingRect(QRect(0, 0, width, QWIDGETSIZE_MAX), Qt::TextWordWrap, text);
    label->setFixedSize(width, lines.height());
    return label;
}

} // namespace

MessageDialog::MessageDialog(const QString& text, const QString& informativeText, QWidget* parent)
    : QDialog(parent), m_text(text), m_informativeText(informativeText), m_texts(new QVBoxLayout),
      m_leading(new QHBoxLayout), m_trailing(new QHBoxLayout)
{
    setWindowTitle(QStringLiteral("Lumora"));
    setWindowRole(QStringLiteral("LumoraMessage"));
    setWindowModality(Qt::ApplicationModal);
    setAccessibleName(text);
    setAccessibleDescription(informativeText);

    m_texts->setSpacing(4);
    m_texts->addWidget(line(TextStyle::headline, text, TidewellTheme::cream()));
    m_texts->addWidget(paragraph(TextStyle::body, informativeText, TidewellTheme::creamMuted()));
    auto* message = new QHBoxLayout;
    message->setSpacing(16);
    const Symbol sign{QStringLiteral("exclamationmark.triangle.fill"), 30};
    message->addWidget(new SymbolLabel(sign, TidewellTheme::copperBright()), 0, Qt::AlignTop);
    message->addLayout(m_texts, 1);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addLayout(m_leading);
    buttons->addStretch();
    buttons->addLayout(m_trailing);
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(padding);
    stack->setSpacing(20);
    stack->setSizeConstraint(QLayout::SetFixedSize);
    stack->addLayout(message);
    stack->addLayout(buttons);
    qApp->installEventFilter(this);
}

void MessageDialog::addDetail(const QString& detail)
{
    m_texts->addWidget(line(TextStyle::subheadline, detail, TidewellTheme::creamSubtle()));
    setAccessibleDescription(accessibleDescription() + u' ' + detail);
}

void MessageDialog::addControl(QWidget* control)
{
    m_texts->addSpacing(10);
    m_texts->addWidget(control, 0, Qt::AlignLeading);
}

StyledButton* MessageDialog::makeButton(const ButtonStyle& style, const QString& text)
{
    auto* button = new StyledButton(style, QString(), text, this);
    connect(button, &QAbstractButton::clicked, this, [this, button] {
        m_clicked = button;
        accept();
    });
    return button;
}

StyledButton* MessageDialog::addButton(const ButtonStyle& style, const QString& text)
{
    StyledButton* button = makeButton(style, text);
    if (m_trailing->isEmpty()) {
        button->setDefault(true);
        button->setFocus();
    }
    m_trailing->insertWidget(0, button);
    return button;
}

StyledButton* MessageDialog::addLeadingButton(const ButtonStyle& style, const QString& text)
{
    StyledButton* button = makeButton(style, text);
    m_leading->addWidget(button);
    return button;
}

void MessageDialog::ask()
{
    if (QGuiApplication::applicationState() != Qt::ApplicationActive) return askQuietly();
    exec();
}

// The toolkit activates each modal window on an X server, whoever has the keyboard; so this one is none there
// and keeps the input from the other windows itself.
void MessageDialog::askQuietly()
{
    m_isQuiet = true;
    setWindowModality(Qt::NonModal);
    setAttribute(Qt::WA_ShowWithoutActivating);
    QEventLoop loop;
    connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
    show();
    QApplication::alert(parentWidget() ? parentWidget()->window() : this);
    loop.exec();
    hide();
    m_isQuiet = false;
}

void MessageDialog::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    m_inFront.start();
}

bool MessageDialog::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate && !std::exchange(m_hadKeyboard, true)) m_inFront.start();
    return QDialog::event(event);
}

bool MessageDialog::isForThis(const QObject* receiver) const
{
    if (receiver == windowHandle()) return true;
    const auto* widget = qobject_cast<const QWidget*>(receiver);
    return widget && widget->window() == this;
}

bool MessageDialog::isForOtherWindow(const QObject* receiver) const
{
    const auto* widget = qobject_cast<const QWidget*>(receiver);
    return widget && widget->window() != this && widget->windowType() != Qt::Popup &&
           widget->window()->windowType() != Qt::Popup && widget->window()->windowType() != Qt::Tool;
}

bool MessageDialog::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        if (isForThis(watched) && m_inFront.isValid() && !m_inFront.hasExpired(deafMilliseconds)) return true;
        return m_isQuiet && isForOtherWindow(watched);
    case QEvent::MouseButtonPress:
        if (!m_isQuiet || !isForOtherWindow(watched)) return false;
        raise();
        activateWindow();
        return true;
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
        return m_isQuiet && isForOtherWindow(watched);
    default:
        return false;
    }
}

void MessageDialog::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), windowGradient(rect(), layoutDirection()));
}

} // namespace lumora
