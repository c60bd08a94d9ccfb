#include "ui/qt/house_style.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QComboBox>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <algorithm>

#include "ui/qt/control_painting.h"
#include "ui/qt/line_icons.h"
#include "ui/qt/look.h"
#include "ui/qt/shapes.h"
#include "ui/qt/slider_style.h"

namespace homewarden::view {
namespace {

constexpr int kControlHeight = 36;
constexpr int kRowHeight = 32;
constexpr int kCheckSide = 20;
constexpr int kScrollBar = 12;
constexpr int kArrowRoom = 30;

bool has_no_frame(const QStyleOption* option) {
  const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  return frame && frame->lineWidth == 0;
}

}  // namespace

HouseStyle::HouseStyle() : QProxyStyle(QStyleFactory::create("Fusion")) {}

void HouseStyle::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (qobject_cast<QPushButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
      qobject_cast<QScrollBar*>(widget))
    widget->setAttribute(Qt::WA_Hover);
}

void HouseStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
  const Look& look = look_of(option->palette);
  switch (element) {
    case PE_PanelButtonCommand:
      return draw_button(option, painter, widget);
    case PE_PanelLineEdit:
      // Inside another control that one has the frame.
      if (has_no_frame(option)) return;
      if (!widget || !qobject_cast<QComboBox*>(widget->parentWidget())) draw_field(option, painter);
      return;
    case PE_IndicatorCheckBox:
      return draw_check(option, painter);
    case PE_FrameFocusRect:
      if (qobject_cast<const QPushButton*>(widget) || !shows_focus(option)) return;
      return draw_focus(*painter, option->rect, 4, look);
    case PE_Frame:
      if (qobject_cast<const QAbstractScrollArea*>(widget))
        return draw_box(*painter, option->rect, kControlCorner, Qt::transparent, look.line);
      break;
    case PE_PanelItemViewRow:
      return;  // PE_PanelItemViewItem draws it
    case PE_PanelItemViewItem:
      return draw_row(option, painter);
    case PE_FrameMenu:
      return draw_box(*painter, option->rect, 0, Qt::transparent, look.line);
    case PE_PanelTipLabel:
      return painter->fillRect(option->rect, look.message);
    case PE_IndicatorArrowDown:
      return draw_icon(*painter, LineIcon::kDown, centred(option->rect, 16), look.quiet);
    case PE_IndicatorHeaderArrow: {
      const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
      const bool down = header && header->sortIndicator == QStyleOptionHeader::SortDown;
      painter->save();
      painter->translate(QRectF(option->rect).center());
      if (!down) painter->rotate(180);
      draw_icon(*painter, LineIcon::kDown, QRectF(-7, -7, 14, 14), look.quiet);
      painter->restore();
      return;
    }
    default:
      break;
  }
  QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void HouseStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                             const QWidget* widget) const {
  const Look& look = look_of(option->palette);
  if (element == CE_PushButtonLabel) {
    if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
      QStyleOptionButton words = *button;
      const bool enabled = (option->state & State_Enabled) != 0;
      words.palette.setColor(QPalette::ButtonText, words_of(widget, enabled, look));
      words.state &= ~(State_Sunken | State_On);  // Fusion would shift the words
      if (enabled && kind_of(widget) == ButtonKind::kPrimary && !words.icon.isNull())
        words.icon = in_colour(words.icon, words.iconSize, painter->device()->devicePixelRatioF(),
                               Qt::white);
      return QProxyStyle::drawControl(element, &words, painter, widget);
    }
  }
  if (element == CE_HeaderSection || element == CE_HeaderEmptyArea) {
    painter->fillRect(option->rect, look.card);
    painter->fillRect(QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                      look.line);
    return;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void HouseStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
  if (control == CC_ComboBox) {
    const auto* combo = static_cast<const QStyleOptionComboBox*>(option);
    draw_field(option, painter);
    QStyleOption arrow = *option;
    arrow.rect = subControlRect(CC_ComboBox, combo, SC_ComboBoxArrow, widget);
    return drawPrimitive(PE_IndicatorArrowDown, &arrow, painter, widget);
  }
  if (control == CC_Slider) {
    const auto* slider = static_cast<const QStyleOptionSlider*>(option);
    if (slider->orientation == Qt::Horizontal) return draw_slider(*slider, painter, widget);
  }
  if (control == CC_ScrollBar)
    return draw_scroll_bar(*this, *static_cast<const QStyleOptionSlider*>(option), painter, widget);
  QProxyStyle::drawComplexControl(control, option, painter, widget);
}

// Scroll bars have no arrows; a combo box has room for words and for its arrow.
QRect HouseStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                 SubControl part, const QWidget* widget) const {
  const QRect whole = option->rect;
  if (control == CC_ComboBox) {
    const QRect arrow(whole.right() - kArrowRoom + 1, whole.top(), kArrowRoom, whole.height());
    if (part == SC_ComboBoxArrow) return visualRect(option->direction, whole, arrow);
    const QRect words = whole.adjusted(8, 2, -kArrowRoom, -2);
    if (part == SC_ComboBoxEditField) return visualRect(option->direction, whole, words);
  }
  if (control == CC_Slider && part == SC_SliderGroove) return whole;
  if (control == CC_Slider && part == SC_SliderHandle) {
    const auto* slider = static_cast<const QStyleOptionSlider*>(option);
    if (slider->orientation == Qt::Horizontal) {
      const int travel = whole.width() - kSliderHandle - 4;
      const int at = sliderPositionFromValue(slider->minimum, slider->maximum,
                                             slider->sliderPosition, travel, slider->upsideDown);
      return {whole.left() + 2 + at, whole.center().y() - kSliderHandle / 2, kSliderHandle,
              kSliderHandle};
    }
  }
  if (control == CC_ScrollBar) {
    const auto* bar = static_cast<const QStyleOptionSlider*>(option);
    const bool upright = bar->orientation == Qt::Vertical;
    const int length = upright ? whole.height() : whole.width();
    const int range = std::max(1, bar->maximum - bar->minimum);
    const int handle =
        std::clamp(length * bar->pageStep / (range + bar->pageStep), std::min(40, length), length);
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              length - handle, bar->upsideDown);
    const auto stretch = [&](int from, int to) {
      return upright ? QRect(0, from, whole.width(), to - from)
                     : QRect(from, 0, to - from, whole.height());
    };
    switch (part) {
      case SC_ScrollBarAddLine:
      case SC_ScrollBarSubLine:
        return {};
      case SC_ScrollBarSlider:
        return stretch(start, start + handle);
      case SC_ScrollBarSubPage:
        return stretch(0, start);
      case SC_ScrollBarAddPage:
        return stretch(start + handle, length);
      case SC_ScrollBarGroove:
        return whole;
      default:
        break;
    }
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

QRect HouseStyle::subElementRect(SubElement element, const QStyleOption* option,
                                 const QWidget* widget) const {
  const QRect rect = QProxyStyle::subElementRect(element, option, widget);
  if (element == SE_LineEditContents &&
      !(widget && qobject_cast<QComboBox*>(widget->parentWidget())))
    return rect.adjusted(6, 0, -6, 0);
  return rect;
}

// A height that fits larger text too.
QSize HouseStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                   const QSize& contents, const QWidget* widget) const {
  QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
  const int words = option ? option->fontMetrics.height() : 20;
  const int height = std::max(kControlHeight, words + 14);
  switch (type) {
    case CT_PushButton:
      return {size.width() + 12, std::max(size.height(), height)};
    case CT_ComboBox:
      return {contents.width() + kArrowRoom + 16, height};
    case CT_LineEdit:
      if (widget && qobject_cast<QComboBox*>(widget->parentWidget())) return size;
      return {size.width(), height};
    case CT_ItemViewItem:
      return {size.width(), std::max(size.height(), std::max(kRowHeight, words + 10))};
    case CT_MenuItem: {
      const auto* entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
      if (entry && entry->menuItemType == QStyleOptionMenuItem::Separator) return size;
      return {size.width() + 16, std::max(size.height(), std::max(kRowHeight, words + 10))};
    }
    case CT_HeaderSection:
      return {size.width(), std::max(size.height(), words + 12)};
    default:
      return size;
  }
}

int HouseStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                            const QWidget* widget) const {
  switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
      return kCheckSide;
    case PM_CheckBoxLabelSpacing:
      return 10;
    case PM_ScrollBarExtent:
      return kScrollBar;
    case PM_SliderLength:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
      return kSliderHandle;
    case PM_ScrollBarSliderMin:
      return 40;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
      return 0;
    case PM_MenuVMargin:
    case PM_MenuHMargin:
      return 6;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int HouseStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                          QStyleHintReturn* data) const {
  switch (hint) {
    case SH_ComboBox_Popup:  // a list below the box, not over it
      return 0;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
      return 0;
    case SH_ItemView_ShowDecorationSelected:
      return 1;
    case SH_Slider_AbsoluteSetButtons:  // a press beside the handle brings it there
      return Qt::LeftButton;
    default:
      return QProxyStyle::styleHint(hint, option, widget, data);
  }
}

}  // namespace homewarden::view
