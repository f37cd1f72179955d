// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The bar of totals above the rows. Each arriving result is added to the figures; the list is read again only
// where results were removed.
#pragma once

#include "model/result_text.h"

#include <QTimer>
#include <QWidget>

class QLabel;

namespace lumora {

class ProcessingModel;

// One figure under its title.
class SummaryMetric : public QWidget
{
    Q_OBJECT

public:
    explicit SummaryMetric(QWidget* parent = nullptr);

    void display(const QString& title, const QString& value);
    QString title() const;
    QString value() const;

private:
    QLabel* m_title;
    QLabel* m_value;
};

class ResultsSummary : public QWidget
{
    Q_OBJECT

public:
    // The model must outlive the bar.
    explicit ResultsSummary(const ProcessingModel& processing, QWidget* parent = nullptr);

    // Behind the figures, at the other end of the bar.
    void addTrailing(QWidget* controls);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addAll();
    void addNewest();
    void refresh();

    const ProcessingModel& m_processing;
    ResultTotals m_totals;
    SummaryMetric* m_files;
    SummaryMetric* m_difference;
    SummaryMetric* m_reduction;
    QTimer m_changes;
};

} // namespace lumora
