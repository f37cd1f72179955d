// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lumora_style.h"

#include "ui/control_painting.h"
#include "ui/fonts.h"
#include "ui/settings_chip_group.h"
#include "ui/surfaces.h"
#include "ui/tidewell_theme.h"

#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QComboBox>
#include <QPainter>
#include <QStyleOption>

#include <algorithm>

namespace lumora {
namespace {

constexpr int scrollBarExtent = 12;
constexpr int shortestScrollThumb = 36;

template <class Option>
const Option* as(const QStyleOption* option)
{
    return qstyleoption_cast<const Option*>(option);
}

int pickerHeight()
{
    return fonts::scaled(26);
}

} // namespace

LumoraStyle::LumoraStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

QPalette LumoraStyle::standardPalette() const
{
    using namespace TidewellTheme;
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, const QColor& colour) { palette.setColor(role, colour); };
    set(QPalette::Window, bg());
    set(QPalette::WindowText, cream());
    set(QPalette::Base, lightCardRaised());
    set(QPalette::AlternateBase, lightCard());
    set(QPalette::Text, ink());
    set(QPalette::PlaceholderText, mutedInk());
    set(QPalette::Button, lightCard());
    set(QPalette::ButtonText, ink());
    set(QPalette::BrightText, cream());
    set(QPalette::Highlight, copper());
    set(QPalette::HighlightedText, cream());
    set(QPalette::Link, copperBright());
    set(QPalette::LinkVisited, copperBright());
    set(QPalette::ToolTipBase, leatherDeep());
    set(QPalette::ToolTipText, cream());
    palette.setColor(QPalette::Disabled, QPalette::WindowText, withOpacity(cream(), 0.45));
    palette.setColor(QPalette::Disabled, QPalette::Text, withOpacity(ink(), 0.45));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, withOpacity(ink(), 0.45));
    return palette;
}

void LumoraStyle::polish(QWidget* widget)
{
    if (qobject_cast<QComboBox*>(widget) || qobject_cast<QAbstractSlider*>(widget))
        widget->setAttribute(Qt::WA_Hover);
    QProxyStyle::polish(widget);
}

void LumoraStyle::polish(QPalette& palette)
{
    palette = standardPalette();
}

int LumoraStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return fonts::scaled(16);
    case PM_CheckBoxLabelSpacing:
        return 8;
    case PM_SliderLength:
        return 18;
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return 22;
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap:
        return scrollBarExtent;
    case PM_ScrollBarSliderMin:
        return shortestScrollThumb;
    case PM_MenuPanelWidth:
        return 1;
    case PM_MenuVMargin:
        return 4;
    case PM_MenuHMargin:
        return 0;
    case PM_ToolTipLabelFrameWidth:
        return 5;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int LumoraStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* returnData) const
{
    switch (hint) {
    case SH_ComboBox_Popup:
    case SH_Menu_SupportsSections:
    case SH_Menu_MouseTracking:
    case SH_ComboBox_ListMouseTracking:
    case SH_ScrollBar_Transient:
        return 1;
    case SH_Slider_AbsoluteSetButtons:
        return Qt::LeftButton;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QSize LumoraStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                    const QWidget* widget) const
{
    if (type == CT_MenuItem) {
        if (const auto* item = as<QStyleOptionMenuItem>(option)) return controls::menuItemSize(*item);
    }
    if (type == CT_ComboBox) return {size.width() + 40, pickerHeight()};
    if (type == CT_LineEdit) return {size.width() + 12, fonts::scaled(24)};
    if (type == CT_CheckBox) {
        const QSize plain = QProxyStyle::sizeFromContents(type, option, size, widget);
        return {plain.width() + 4, fonts::scaled(18)};
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

QRect LumoraStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const
{
    if (element == SE_FrameLayoutItem && qobject_cast<const SettingsChipGroup*>(widget)) {
        return option->rect.marginsRemoved(SettingsChipGroup::bleed);
    }
    if (element == SE_LineEditContents) return option->rect.adjusted(6, 0, -6, 0);
    if (element == SE_CheckBoxFocusRect) return option->rect;
    if (element == SE_CheckBoxLayoutItem || element == SE_ComboBoxLayoutItem ||
        element == SE_SliderLayoutItem) {
        return option->rect;
    }
    return QProxyStyle::subElementRect(element, option, widget);
}

QRect LumoraStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                  const QWidget* widget) const
{
    if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
        return visualRect(option->direction, option->rect, option->rect.adjusted(8, 2, -26, -2));
    }
    if (control == CC_ComboBox && part == SC_ComboBoxListBoxPopup) return option->rect;
    if (control == CC_ScrollBar) {
        // No buttons: the groove is the whole bar.
        const auto* bar = as<QStyleOptionSlider>(option);
        if (part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine) return {};
        if (bar && part == SC_ScrollBarGroove) return bar->rect;
        if (bar) {
            const bool upright = bar->orientation == Qt::Vertical;
            const int length = upright ? bar->rect.height() : bar->rect.width();
            const qint64 range = qint64(bar->maximum) - bar->minimum;
            const auto fitting =
                static_cast<int>(qint64(length) * bar->pageStep / std::max<qint64>(1, range + bar->pageStep));
            const int thumb = std::min(length, std::max(shortestScrollThumb, fitting));
            const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                                      length - thumb, bar->upsideDown);
            const auto span = [&](int from, int to) {
                return upright ? QRect(bar->rect.left(), from, bar->rect.width(), to - from)
                               : QRect(from, bar->rect.top(), to - from, bar->rect.height());
            };
            if (part == SC_ScrollBarSlider) return span(start, start + thumb);
            if (part == SC_ScrollBarSubPage) return span(0, start);
            if (part == SC_ScrollBarAddPage) return span(start + thumb, length);
        }
    }
    return QProxyStyle::subControlRect(control, option, part, widget);
}

void LumoraStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const
{
    switch (element) {
    case PE_PanelLineEdit:
        return controls::paintField(*painter, *option);
    case PE_FrameLineEdit:
        return;
    case PE_IndicatorCheckBox:
        return controls::paintCheckBox(*painter, *option);
    case PE_FrameFocusRect:
        return controls::paintFocus(*painter, *option, 5);
    case PE_PanelMenu:
        return controls::paintMenuPanel(*painter, option->rect);
    case PE_FrameMenu:
        return;
    case PE_PanelTipLabel:
        return paintRounded(*painter, option->rect, 0, TidewellTheme::leatherDeep(),
                            TidewellTheme::copperStrong());
    default:
        return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void LumoraStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const
{
    if (element == CE_MenuItem) {
        if (const auto* item = as<QStyleOptionMenuItem>(option))
            return controls::paintMenuItem(*painter, *item);
    }
    if (element == CE_MenuEmptyArea || element == CE_MenuVMargin || element == CE_MenuHMargin) return;
    QProxyStyle::drawControl(element, option, painter, widget);
}

void LumoraStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                     QPainter* painter, const QWidget* widget) const
{
    if (control == CC_ComboBox) {
        if (const auto* picker = as<QStyleOptionComboBox>(option))
            return controls::paintPicker(*painter, *picker);
    }
    const auto* slider = as<QStyleOptionSlider>(option);
    if (slider && control == CC_Slider && slider->orientation == Qt::Horizontal) {
        return controls::paintSlider(*painter, *slider,
                                     subControlRect(control, option, SC_SliderHandle, widget));
    }
    if (slider && control == CC_ScrollBar) {
        return controls::paintScrollBar(*painter, *slider,
                                        subControlRect(control, option, SC_ScrollBarSlider, widget));
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

} // namespace lumora
