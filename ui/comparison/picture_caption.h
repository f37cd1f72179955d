// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is said of one of two compared pictures: what it is to the other, its file's name, its facts. Texts
// that do not fit are shortened; the tooltip has all of them.
#pragma once

#include <QWidget>

namespace lumora {

class PictureCaption : public QWidget
{
    Q_OBJECT

public:
    enum class Edge { leading, trailing };

    PictureCaption(const QString& role, Edge edge, QWidget* parent = nullptr);

    // A name of a user's, and facts one after another.
    void display(const QString& name, const QStringList& facts);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {60, sizeHint().height()}; }

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QString factsText() const { return m_facts.join(QStringLiteral(" \u00B7 ")); }

    const QString m_role;
    const Edge m_edge;
    QString m_name;
    QStringList m_facts;
};

} // namespace lumora
