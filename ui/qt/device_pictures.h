#pragma once

#include <QPixmap>
#include <string>

namespace homewarden::view {

// The picture of a device, drawn from its own source where the program brought the file along, so
// that it is sharp at every size; a picture that the person put in its place is shown as it is.
// `side` counts device-independent pixels. Null when there is no such picture.
QPixmap device_picture(const std::string& file, int side, double ratio);

}  // namespace homewarden::view
