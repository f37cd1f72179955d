// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The two links of the drop window's footer: a symbol, a text and an arrow, which open a page in the browser.
#pragma once

#include <QPushButton>
#include <QUrl>

namespace lumora {

class LinkButton : public QPushButton
{
    Q_OBJECT

public:
    LinkButton(QString symbolName, const QString& text, QUrl address, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void open() const;

    const QString m_symbolName;
    const QUrl m_address;
};

class TidewellLink : public LinkButton
{
    Q_OBJECT

public:
    // The compact one holds only the maker's name, for windows in which the credit line does not fit.
    explicit TidewellLink(bool compact = false, QWidget* parent = nullptr);
};

class BuyMeACoffeeLink : public LinkButton
{
    Q_OBJECT

public:
    explicit BuyMeACoffeeLink(QWidget* parent = nullptr);
};

} // namespace lumora
