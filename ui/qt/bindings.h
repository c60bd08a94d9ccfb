#pragma once

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include "ui/controls.h"

namespace homewarden::view {

// Each function joins a control to the widget that shows it, both ways, for the widget's life. The
// name is what a screen reader says; where the control has a caption it may be left out.

// Visible, enabled, tool tip, focus: what all controls have. Part of the others. The control must
// outlive the widget.
void bind_common(Control& control, QWidget* widget, const QString& name = {});

void bind(Label& control, QLabel* widget);
void bind(Button& control, QPushButton* widget);
void bind(CheckBox& control, QCheckBox* widget, const QString& name = {});
void bind(TextBox& control, QLineEdit* widget, const QString& name);
void bind(ComboBox& control, QComboBox* widget, const QString& name);
void bind(ListBox& control, QListWidget* widget, const QString& name);

// A label that is a link: a flat button that looks like a row one can press. Hidden while the label
// is.
QPushButton* make_link(Label& control, QWidget* parent);

// A label that tells what is wrong, in a frame; its text is never taken for markup. Hidden while
// the label is.
QLabel* make_notice(Label& control, QWidget* parent);

// A combo box that is editable, as all of the program's are, and joined to its control. It may
// become narrower than its entries when the window is small.
QComboBox* make_combo(ComboBox& control, const QString& name, QWidget* parent);
// The same for a few short entries: always wide enough for the longest of them.
QComboBox* make_short_combo(ComboBox& control, const QString& name, QWidget* parent);

// A button that keeps its size when its caption turns bold and back.
QPushButton* make_button(Button& control, QWidget* parent);

}  // namespace homewarden::view
