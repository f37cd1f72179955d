// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_notice.h"

#include "ui/controls/styled_label.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QVBoxLayout>

namespace lumora {
namespace {

// Centred whatever the direction, which the label itself follows.
class CentredLabel : public StyledLabel
{
public:
    using StyledLabel::StyledLabel;

protected:
    bool event(QEvent* event) override
    {
        const bool isTaken = StyledLabel::event(event);
        if (alignment() != Qt::AlignCenter) setAlignment(Qt::AlignCenter);
        return isTaken;
    }
};

} // namespace

HistoryNotice::HistoryNotice(QWidget* parent)
    : QWidget(parent),
      m_sentence(new CentredLabel(
          QString(), [] { return fonts::font(fonts::TextStyle::headline); }, TidewellTheme::cream())),
      m_explanation(new CentredLabel(
          QString(), [] { return fonts::font(fonts::TextStyle::body); }, TidewellTheme::creamMuted()))
{
    auto* stack = new QVBoxLayout(this);
    stack->setSpacing(6);
    stack->addStretch();
    for (QLabel* label : {m_sentence, m_explanation}) {
        label->setWordWrap(true);
        stack->addWidget(label);
    }
    stack->addStretch();
}

void HistoryNotice::display(const QString& sentence, const QString& explanation)
{
    m_sentence->setText(sentence);
    m_explanation->setText(explanation);
}

QString HistoryNotice::text() const
{
    return m_sentence->text() + u'\n' + m_explanation->text();
}

} // namespace lumora
