// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/lumora_style.h"

#include "ui/theme/control_painting.h"
#include "ui/theme/fonts.h"
#include "ui/theme/layout_bleed.h"
#include "ui/theme/scroll_bar.h"
#include "ui/theme/style_icons.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/theme_palette.h"
#include "ui/theme/tidewell_theme.h"

#include <QAbstractSlider>
#include <QComboBox>
#include <QPainter>
#include <QStyleOption>

namespace lumora {
namespace {

constexpr int scrollBarExtent = 12;

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
    return themePalette();
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
        return controls::shortestScrollThumb;
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

QIcon LumoraStyle::standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const
{
    if (std::optional<QIcon> icon = styleIcon(kind)) return std::move(*icon);
    return QProxyStyle::standardIcon(kind, option, widget);
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
        return {plain.width() + 10, fonts::scaled(20)};
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

QRect LumoraStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const
{
    if (element == SE_FrameLayoutItem) {
        const QMargins bleed = layoutBleed(widget);
        if (!bleed.isNull()) return option->rect.marginsRemoved(bleed);
    }
    if (element == SE_LineEditContents) return option->rect.adjusted(6, 0, -6, 0);
    if (element == SE_CheckBoxFocusRect || element == SE_PushButtonFocusRect) return option->rect;
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
        if (const auto* bar = as<QStyleOptionSlider>(option)) return controls::scrollBarPart(*bar, part);
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
    case PE_PanelButtonCommand:
        if (const auto* button = as<QStyleOptionButton>(option))
            return controls::paintButton(*painter, *button);
        break;
    case PE_PanelButtonTool:
        return controls::paintToolButton(*painter, *option);
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
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
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
        return controls::paintScrollBar(*painter, *slider);
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

} // namespace lumora
