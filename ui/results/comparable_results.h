// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Results in rows that a comparison can walk through. Main thread.
#pragma once

#include "records/processing_result.h"

#include <QAbstractListModel>

#include <optional>

namespace lumora {

class ComparableResults : public QAbstractListModel
{
public:
    using QAbstractListModel::QAbstractListModel;

    // Whether the row has an output.
    virtual bool isComparable(const QModelIndex& index) const = 0;
    // Of such a row. Absent while it is still being read; dataChanged() tells when it is there.
    virtual std::optional<ProcessingResult> comparedResult(const QModelIndex& index) = 0;
    // The row of a result that was given; invalid when it is in the list no more.
    virtual QModelIndex rowOf(const Uuid& result) const = 0;
};

} // namespace lumora
