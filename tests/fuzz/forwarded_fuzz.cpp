// What a client writes into the headers of proxies: whatever it is, the address that the proxy adds
// behind it is taken, or none.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "platform/http/forwarded.h"

namespace {

using namespace homewarden::http;

void check(const ForwardedHeaders& headers, const char* added) {
  const Hop hop = last_hop(headers);
  if (hop.from && *hop.from != *parse_address(added)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  check({text + ", for=192.0.2.7", "", "", true}, "192.0.2.7");
  check({text + ",for=\"[2001:db8::7]:80\";proto=https", text, "", true}, "2001:db8::7");
  check({text, text + ", 192.0.2.7", text, true}, "192.0.2.7");
  return 0;
}
