#pragma once

#include <QList>
#include <QRadioButton>
#include <QString>
#include <functional>
#include <optional>

#include "ui/controls.h"
#include "ui/qt/line_icons.h"

namespace homewarden::view {

struct Segment {
  QString caption;
  std::optional<LineIcon> icon = std::nullopt;
};

// A few choices side by side, of which one holds or none. Arrow keys go from one to the next, a
// letter chooses the one that begins with it.
class Segments : public QWidget {
 public:
  // `chosen` is called with the position of what a person has chosen.
  Segments(const QList<Segment>& choices, const QString& name, std::function<void(int)> chosen,
           QWidget* parent);

  // In the place of those that were there; none of them is chosen.
  void offer(const QList<Segment>& choices);
  // Shows this one as chosen; none for -1.
  void show_choice(int position);
  int choice() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void arrange();
  int least_width_of_all() const;
  void choose(QRadioButton* button);
  bool choose_letter(const QString& letter);

  QList<QRadioButton*> buttons_;
  std::function<void(int)> chosen_;
};

// The entries of a choice object; one that a person typed elsewhere and that is none of them shows
// as no choice.
Segments* make_segments(ComboBox& control, const QString& name, QWidget* parent);

}  // namespace homewarden::view
