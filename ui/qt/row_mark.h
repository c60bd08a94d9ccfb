#pragma once

#include <QIcon>
#include <QString>

namespace homewarden::view {

// How a row of a list that something is wrong with looks, and what a screen reader says of it.

QIcon mark_icon();

QString marked_text(const QString& text, const QString& why);

}  // namespace homewarden::view
