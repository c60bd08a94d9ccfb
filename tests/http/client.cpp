#include "tests/http/client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <utility>

#include "base/text.h"

namespace homewarden::testing {
namespace {

using namespace std::chrono_literals;

// Calls connect() or bind() with an address of either kind.
bool put(decltype(::connect) function, int socket, const std::string& address, int port) {
  sockaddr_in v4{};
  v4.sin_family = AF_INET;
  v4.sin_port = htons(static_cast<std::uint16_t>(port));
  if (inet_pton(AF_INET, address.c_str(), &v4.sin_addr) == 1)
    return function(socket, reinterpret_cast<const sockaddr*>(&v4), sizeof v4) == 0;
  sockaddr_in6 v6{};
  v6.sin6_family = AF_INET6;
  v6.sin6_port = htons(static_cast<std::uint16_t>(port));
  inet_pton(AF_INET6, address.c_str(), &v6.sin6_addr);
  return function(socket, reinterpret_cast<const sockaddr*>(&v6), sizeof v6) == 0;
}

}  // namespace

std::string Answer::header(const std::string& name) const {
  const std::size_t start = find_ignoring_case(head, "\r\n" + name + ": ");
  if (start == std::string::npos) return "";
  const std::size_t value = start + name.size() + 4;
  return head.substr(value, head.find("\r\n", value) - value);
}

// Connecting takes no answer of the server: the system puts the connection in its queue.
Client::Client(SocketLoop& loop, int port, const std::string& address, const std::string& from)
    : loop_(loop),
      socket_(::socket(address.find(':') == std::string::npos ? AF_INET : AF_INET6,
                       SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  if (!from.empty()) put(::bind, socket_.get(), from, 0);
  connected_ = put(::connect, socket_.get(), address, port);
}

void Client::send(std::string_view bytes) {
  loop_.run_until([&] {
    const ssize_t sent =
        ::send(socket_.get(), bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
    return bytes.empty() || (sent < 0 && errno != EAGAIN);
  });
}

bool Client::take() {
  std::array<char, 65536> buffer{};
  const ssize_t got = ::recv(socket_.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
  if (got > 0) input_.append(buffer.data(), static_cast<std::size_t>(got));
  return got > 0 || (got < 0 && errno == EAGAIN);
}

bool Client::has_input() {
  take();
  return !input_.empty();
}

bool Client::is_closed_within(std::chrono::milliseconds limit) {
  return loop_.run_until([&] { return !take(); }, limit);
}

Answer Client::read(bool to_head) {
  bool open = true;
  std::size_t end = std::string::npos;
  const auto head_complete = [&] {
    open = open && take();
    end = input_.find("\r\n\r\n");
    return end != std::string::npos || !open;
  };
  if (!loop_.run_until(head_complete) || end == std::string::npos) return {};
  Answer answer;
  answer.head = input_.substr(0, end + 2);
  answer.status = std::stoi(answer.head.substr(9, 3));
  input_.erase(0, end + 4);
  const std::string length = answer.header("Content-Length");
  const bool no_body = to_head || answer.status == 304 || length.empty();
  const std::size_t size = no_body ? 0 : std::stoul(length);
  loop_.run_until([&] {
    open = open && take();
    return input_.size() >= size || !open;
  });
  answer.body = input_.substr(0, size);
  input_.erase(0, size);
  return answer;
}

void Client::close(bool reset) {
  const linger at_once{1, 0};
  if (reset) ::setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
  socket_ = Descriptor();
}

Answer Client::ask(const std::string& path, const std::string& headers, const std::string& method) {
  send(method + " " + path + " HTTP/1.1\r\n" + headers + "\r\n");
  return read(method == "HEAD");
}

int free_port() {
  const Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in any{};
  any.sin_family = AF_INET;
  any.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof any;
  if (::bind(socket.get(), reinterpret_cast<sockaddr*>(&any), size) != 0 ||
      ::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&any), &size) != 0)
    return 0;
  return ntohs(any.sin_port);
}

}  // namespace homewarden::testing
