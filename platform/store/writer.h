#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/store/connection.h"
#include "platform/store/exchange.h"

namespace homewarden::store {

// The thread that works on one file: it opens it, writes what is recorded, in order, and looks at
// what other processes have written. What fails is tried again, first after a hundredth of a second
// and at last every two seconds, for as long as it takes.
class Writer {
 public:
  Writer(std::shared_ptr<Exchange> exchange, std::filesystem::path file);

  // Returns when it is told to stop; what waits then has been tried once more if it could be
  // written the last time.
  void run();

 private:
  using Clock = std::chrono::steady_clock;

  // These answer whether all is well with the file.
  bool work();
  bool open();
  bool write_waiting();
  bool look();

  bool has_lost_log();

  void read_only(StoreTrouble why);
  int open_in_turn();
  void publish(Values values, bool is_another_file = false);
  bool fail(int result);
  void tell_trouble(StoreTrouble trouble);
  void tell_unless_same(const StoreState& before);
  void rest(bool all_well);

  const std::shared_ptr<Exchange> exchange_;
  const std::filesystem::path file_;
  Connection connection_;
  bool stopping_ = false;
  bool is_another_ = false;  // what lies under the name now is not what was read last
  bool is_stale_ = false;    // it may lack what was written last
  std::string read_stamp_;   // of the file as it was read without being opened for writing
  std::chrono::milliseconds interval_{0};
  Clock::time_point locked_since_{};  // the beginning of time: it is not locked
};

}  // namespace homewarden::store
