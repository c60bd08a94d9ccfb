#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/cm11/codes.h"

namespace homewarden::cm11 {

// One exchange with the interface that ends on the power line: docs/cm11-protocol.md, "Sending".
struct Transmission {
  std::uint8_t header = 0;
  std::uint8_t code = 0;
  int dim_steps = 0;       // how many steps of dimming go out: how long the power line takes
  bool repeatable = true;  // false when the module acts on every copy that goes out (Dim, Bright)

  std::string bytes() const;
  std::uint8_t checksum() const;
  bool is_function() const;
  Address address() const;  // the unit means nothing for a function
};

// The header differs for G5 alone, whose checksum would be taken for a ready.
Transmission address_transmission(const Address& address);

// `house` 0 to 15, `function` 0 to 15, `dim_steps` 0 to 22 (0 for all but Dim and Bright).
Transmission function_transmission(int house, int function, int dim_steps);

// A function that no module acts upon, but after which the next address starts anew.
inline constexpr int kHailAcknowledge = 9;

// A function that speaks to a whole house code and to no unit of it.
bool is_house_wide(int function);

// "On", "All Units Off"; "function 12" for those without a common name.
std::string function_name(int function);

// The share of the dimming range, 0 to 100, as the nearest of the 22 steps. Values outside are
// taken as the end of the range they lie beyond, what is no number as 0. 100 is 22 steps.
int dim_steps_from_percent(double percent);

// Sum of the bytes modulo 256.
std::uint8_t checksum_of(std::string_view bytes);

// The seven bytes that set the interface's clock; battery timer, monitored status and purge timer
// are left as they are.
std::string clock_bytes(const LocalTime& now);

// The interface's checksum of clock_bytes() leaves the header byte out. The bytes must not be
// empty.
std::uint8_t clock_checksum(std::string_view bytes);

inline constexpr std::size_t kStatusLength = 14;

// Whether 14 bytes can be an interface's status: what tells it from a modem or a mouse. Looks at
// the clock, the only fields that cannot hold every value.
bool is_plausible_status(std::string_view bytes);

}  // namespace homewarden::cm11
