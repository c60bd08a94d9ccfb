#pragma once

#include <string>
#include <vector>

#include "ui/controls.h"

namespace homewarden {

// A token of the list.
struct TokenFace {
  int place = 0;      // where it is stored
  std::string name;   // what a person calls it; for a damaged one what is known of it
  std::string right;  // "May only read"
  std::string dates;  // "Made on 2026-11-24, last used on 2026-11-25"
  bool is_damaged = false;

  bool operator==(const TokenFace&) const = default;
};

// The tokens by which programs use the house without logging in.
struct TokenPanel {
  TokenPanel();
  // With "" there is none any more.
  void show_new_token(const std::string& secret, const std::string& words);

  Property<std::vector<TokenFace>> tokenfaces;
  TextBox txt_tokenname;
  ComboBox com_tokenright;  // kTokenReads or kTokenDoes
  Button cmd_maketoken{"Make a token"};
  Signal<int> revoke_asked;  // the place of the token

  // The one that was just made, until the panel is left.
  TextBox txt_newtoken;  // "" and hidden while there is none
  Label lab_newtoken;    // whose it is, and that it is not shown again
  Button cmd_copytoken{"Copy token"};
};

inline constexpr const char* kTokenReads = "May only read";
inline constexpr const char* kTokenDoes = "May do everything";

}  // namespace homewarden
