// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/tool_tip.h"

namespace lumora {

QString toolTipOf(QStringList lines)
{
    lines.removeAll(QString());
    return QStringLiteral("<p style=\"white-space:pre\">%1</p>").arg(lines.join(u'\n').toHtmlEscaped());
}

} // namespace lumora
