// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The two links at the foot of the drop window. The maker's link shortens where its credit line does not fit.
#pragma once

#include <QWidget>

namespace lumora {

class BuyMeACoffeeLink;
class TidewellLink;

class DropWindowFooter : public QWidget
{
    Q_OBJECT

public:
    explicit DropWindowFooter(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    bool event(QEvent* event) override;

private:
    void arrange();

    TidewellLink* m_full;
    TidewellLink* m_compact;
    BuyMeACoffeeLink* m_coffee;
};

} // namespace lumora
