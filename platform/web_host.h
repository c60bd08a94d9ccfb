#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "platform/handle.h"
#include "platform/network_address.h"

struct sockaddr;

namespace homewarden {

// What the web server needs of the system that it runs on. Sockets are the numbers by which the
// system and the HTTP library know them.

// A file that is open to be sent.
struct OpenFile {
  Handle file;
  std::uint64_t number = 0;  // tells it from other files of its folder
  std::uint64_t size = 0;
  std::int64_t modified = 0;  // nanoseconds since 1970, UTC
};

// A folder of documents, with the file of passwords in it.
class WebFolder {
 public:
  virtual ~WebFolder() = default;

  // Nothing unless `name`, a relative path with slashes, is a regular file in the folder, with no
  // symbolic link on the way, and not the file with the passwords under another name. Never waits.
  virtual std::optional<OpenFile> open(const std::string& name) = 0;

  // What a file holds, at most so many bytes of it; "" when it cannot be read.
  virtual std::string read(const OpenFile& file, std::size_t most) = 0;

  // The content of `htaccess.txt`, of whatever letter case; "" when there is none or it cannot be
  // read.
  virtual std::string passwords() = 0;

  // A secret of the server's own, in a file beside the passwords that nobody but its owner may
  // read; "" when there is none. One that cannot be kept is lost silently.
  virtual std::string key() = 0;
  virtual void keep_key(const std::string& key) = 0;
};

// Sockets of which one can be waited for in place of all.
class SocketSet {
 public:
  virtual ~SocketSet() = default;

  // To be read when one of them is.
  virtual int descriptor() const = 0;
  // False when it cannot be waited for.
  virtual bool add(int socket) = 0;
  // Before the socket is closed. Nothing happens for one that is not in the set.
  virtual void remove(int socket) = 0;
};

class WebHost {
 public:
  virtual ~WebHost() = default;

  // A socket that listens: on the address, or for "" on all addresses of the machine, of IPv6 and
  // IPv4, where the machine has no IPv6 of IPv4 alone. Not open when the port is taken or the
  // address is none.
  virtual Handle listen(const std::string& address, std::uint16_t port) = 0;
  // A second number of the same socket. Not open when there are no more numbers.
  virtual Handle duplicate(const Handle& socket) = 0;
  virtual std::unique_ptr<SocketSet> socket_set() = 0;

  // The unspecified address, which is nobody's, for what is neither IPv4 nor IPv6.
  virtual NetworkAddress address_of(const sockaddr* from) = 0;
  // Of this machine, as the client of the connection called it; nobody's address when that cannot
  // be told.
  virtual NetworkAddress called_address(int socket) = 0;

  // What has come, as far as there is room, and what could be sent without waiting, in bytes. 0
  // when the other side has ended the connection; -1 and errno, EAGAIN where it would have to wait.
  virtual std::ptrdiff_t receive(int socket, void* data, std::size_t room) = 0;
  virtual std::ptrdiff_t send(int socket, const void* data, std::size_t size) = 0;
  // Has what is sent go out at once: an answer in small pieces does not wait for the other side.
  virtual void send_at_once(int socket) = 0;
  // Ends a connection for both sides; whoever has the socket closes it.
  virtual void shut_down(int socket) = 0;
  // For a connection on which something is sent now and then for a long time: the system is to keep
  // little of what its client has not taken, some 64 KB, and to end it when the client takes
  // nothing for so long.
  virtual void expect_reader(int socket, std::chrono::milliseconds patience) = 0;
  // For each connection, in the order given, whether the client has ended it. Does not wait.
  virtual std::vector<bool> hung_up(const std::vector<int>& sockets) = 0;
  // Sockets and files that the process may have open at once; nothing when that is not known.
  virtual std::optional<std::size_t> most_descriptors() = 0;

  // What this machine calls itself, whole and up to the first dot; empty when it has no name.
  virtual std::vector<std::string> machine_names() = 0;
  // The IPv4 addresses under which other devices in the network reach this machine: not its
  // loopback address, and none of a network interface that is down.
  virtual std::vector<std::string> network_addresses() = 0;
  // The networks that this machine reaches without a router, as they are now: not its loopback, no
  // line to one other machine, none of a network interface that is down.
  virtual std::vector<NetworkPrefix> on_link_prefixes() = 0;

  // Files that are not served: certificates and keys.
  virtual Files& files() = 0;
  // Never nullptr; a folder that is missing has no documents.
  virtual std::unique_ptr<WebFolder> folder(std::filesystem::path path) = 0;
};

}  // namespace homewarden
