#pragma once

namespace homewarden::view {

class DeviceCard;

// Lets screen readers take a card for what it is: a check box that has a level, with its slider and
// its buttons below it. To be called once, before the first card is shown.
void make_cards_accessible();

// Tells screen readers what may have changed of a card; nothing happens while there are none.
void announce_card(DeviceCard& card, bool description_changed);

}  // namespace homewarden::view
