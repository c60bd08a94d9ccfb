#include "ui/token_panel.h"

namespace homewarden {

TokenPanel::TokenPanel() {
  for (const char* right : {kTokenReads, kTokenDoes}) com_tokenright.add(right);
  com_tokenright.text = kTokenReads;
  show_new_token({}, {});
}

void TokenPanel::show_new_token(const std::string& secret, const std::string& words) {
  txt_newtoken.text = secret;
  lab_newtoken.caption = words;
  const bool there = !secret.empty();
  lab_newtoken.visible = there;
  txt_newtoken.visible = there;
  cmd_copytoken.visible = there;
}

}  // namespace homewarden
