// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The two building blocks of the preferences: a titled light card, and a row of a label and its control.
#pragma once

#include <QWidget>

class QVBoxLayout;

namespace lumora {

class PreferenceSection : public QWidget
{
    Q_OBJECT

public:
    explicit PreferenceSection(const QString& title, QWidget* parent = nullptr);

    void add(QWidget* row);
    // At its own width, at the leading edge.
    void addLeading(QWidget* row);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* m_content;
};

class FormRow : public QWidget
{
    Q_OBJECT

public:
    FormRow(const QString& label, QWidget* content, QWidget* parent = nullptr);
};

} // namespace lumora
