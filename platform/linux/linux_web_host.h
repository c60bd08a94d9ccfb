#pragma once

#include "platform/linux/posix_files.h"
#include "platform/web_host.h"

namespace homewarden::os_linux {

class LinuxWebHost : public WebHost {
 public:
  Handle listen(const std::string& address, std::uint16_t port) override;
  Handle duplicate(const Handle& socket) override;
  std::unique_ptr<SocketSet> socket_set() override;
  NetworkAddress address_of(const sockaddr* from) override;
  NetworkAddress called_address(int socket) override;
  std::ptrdiff_t receive(int socket, void* data, std::size_t room) override;
  std::ptrdiff_t send(int socket, const void* data, std::size_t size) override;
  void send_at_once(int socket) override;
  void shut_down(int socket) override;
  void expect_reader(int socket, std::chrono::milliseconds patience) override;
  std::vector<bool> hung_up(const std::vector<int>& sockets) override;
  std::optional<std::size_t> most_descriptors() override;
  std::vector<std::string> machine_names() override;
  std::vector<std::string> network_addresses() override;
  std::vector<NetworkPrefix> on_link_prefixes() override;
  Files& files() override { return files_; }
  std::unique_ptr<WebFolder> folder(std::filesystem::path path) override;

 private:
  PosixFiles files_;
};

}  // namespace homewarden::os_linux
