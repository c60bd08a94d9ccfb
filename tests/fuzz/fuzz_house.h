#pragma once

#include <cstdlib>
#include <exception>

#include "core/program/program.h"
#include "tests/platform/fake_world.h"

namespace homewarden::testing {

// A small house with an interface; what escapes from an operation is a finding.
struct FuzzHouse : FakeWorld {
  FuzzHouse() {
    files.contents["/house/rmlst.hwd"] = "Hall~~~\r\nHall~Lamp~A~1\r\nHall~Fan~B~12\r\n";
    files.contents["/house/evelst.hwd"] = "Hall Lamp~A~1~40~12:01~on~daily~mtwufsr\r\n";
    files.contents["/house/macs.hlk"] = "When~A1~Hall~Lamp~turns~on~Turn~On~B12~Hall~Fan\r\n";
    interface_control.status_of_port[1] = 0;
    loop.set_wall_clock(2023, 6, 21, 11, 59, 58);
  }

  Program program{platform("/house"), [](std::exception_ptr) { std::abort(); }};
};

}  // namespace homewarden::testing
