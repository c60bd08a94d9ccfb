#pragma once

#include <QGridLayout>
#include <QRadioButton>
#include <QWidget>

#include "ui/settings_panels.h"

namespace homewarden::view {

// A card for each profile with what it holds; a press shows more of it, and switches nothing.
class ProfileCards : public QWidget {
 public:
  ProfileCards(ProfilePanel& panel, QWidget* parent);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void show_faces();
  void build();
  void arrange();

  ProfilePanel& panel_;
  QGridLayout* places_;
  QList<QRadioButton*> cards_;
  int columns_ = 0;
};

// The next events of the profile that is looked at.
class ProfileEvents : public QWidget {
 public:
  ProfileEvents(ProfilePanel& panel, QWidget* parent);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  const std::vector<EventFace>& events() const;
  int row_height(std::size_t row) const;
  void show_events();

  ProfilePanel& panel_;
};

}  // namespace homewarden::view
