#pragma once

#include <QPointer>
#include <utility>

#include "base/signal.h"

namespace homewarden::view {

// Calls `function` for every emission as long as `owner` lives; signals of the forms outlive the
// widgets that show them.
template <class Function, class... Args>
void watch(Signal<Args...>& signal, QObject* owner, Function function) {
  signal.connect([guard = QPointer<QObject>(owner), function = std::move(function)](Args... args) {
    if (guard) function(args...);
  });
}

// Calls `function` now and after every change.
template <class T, class Function>
void follow(Property<T>& property, QObject* owner, Function function) {
  function(property.get());
  watch(property.changed, owner,
        [&property, function = std::move(function)] { function(property.get()); });
}

}  // namespace homewarden::view
