#include "tests/http/client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>

#include "base/text.h"

namespace homewarden::testing {
namespace {

// Calls connect() or bind() with a port of an address of this machine.
bool put(decltype(::connect) function, int socket, const std::string& address, int port) {
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_port = htons(static_cast<std::uint16_t>(port));
  inet_pton(AF_INET, address.c_str(), &place.sin_addr);
  return function(socket, reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0;
}

}  // namespace

// Connecting takes no answer of the server: the system puts the connection in its queue.
Client::Client(SocketLoop& loop, int port, const std::string& from)
    : loop_(loop), socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  put(::bind, socket_.get(), from, 0);
  connected_ = put(::connect, socket_.get(), "127.0.0.1", port);
}

ssize_t Client::give(const char* data, std::size_t size) {
  return ::send(socket_.get(), data, size, MSG_DONTWAIT | MSG_NOSIGNAL);
}

ssize_t Client::get(char* data, std::size_t room) {
  return ::recv(socket_.get(), data, room, MSG_DONTWAIT);
}

void Client::send(std::string_view bytes) {
  loop_.run_until([&] {
    const ssize_t sent = give(bytes.data(), bytes.size());
    if (sent > 0) bytes.remove_prefix(static_cast<std::size_t>(sent));
    return bytes.empty() || (sent < 0 && errno != EAGAIN);
  });
}

bool Client::take() {
  std::array<char, 65536> buffer{};
  const ssize_t got = get(buffer.data(), buffer.size());
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

Answer Client::read() {
  bool open = true;
  const auto has = [&](std::size_t size) {
    return loop_.run_until([&] {
      open = open && take();
      return input_.size() >= size || !open;
    }) && input_.size() >= size;
  };
  while (input_.find("\r\n\r\n") == std::string::npos)
    if (!has(input_.size() + 1)) return {};
  const std::size_t end = input_.find("\r\n\r\n") + 4;
  Answer answer{std::stoi(input_.substr(9, 3)), "", input_.substr(0, end)};
  const std::size_t length = find_ignoring_case(answer.head, "\r\nContent-Length: ");
  const bool has_body = length != std::string::npos;
  const std::size_t size = has_body ? std::stoul(input_.substr(length + 18)) : 0;
  has(end + size);
  answer.body = input_.substr(end, size);
  input_.erase(0, end + size);
  return answer;
}

void Client::close(bool reset) {
  const linger at_once{1, 0};
  if (reset) ::setsockopt(socket_.get(), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
  socket_ = os_linux::Descriptor();
}

void Client::request(const std::string& path, const std::string& headers) {
  send("GET " + path + " HTTP/1.1\r\nHost: localhost\r\n" + headers + "\r\n");
}

Answer Client::ask(const std::string& path, const std::string& headers) {
  request(path, headers);
  return read();
}

Answer Client::send_body(const std::string& method, const std::string& path,
                         const std::string& body, const std::string& headers) {
  send(method + " " + path + " HTTP/1.1\r\nHost: localhost\r\nContent-Length: " +
       std::to_string(body.size()) + "\r\n" + headers + "\r\n" + body);
  return read();
}

int free_port() {
  const os_linux::Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in place{};
  socklen_t size = sizeof place;
  put(::bind, socket.get(), "127.0.0.1", 0);
  ::getsockname(socket.get(), reinterpret_cast<sockaddr*>(&place), &size);
  return ntohs(place.sin_port);
}

}  // namespace homewarden::testing
