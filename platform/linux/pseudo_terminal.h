#pragma once

#include <string>
#include <string_view>

namespace homewarden::os_linux {

// A serial port that exists only in this machine: another program opens path() and finds at its far
// end what is written and read here. Like a port with a cable, it takes no notice of programs that
// open and close it; only close() is seen by them, as the loss of the port. A program that was
// killed with the port for itself alone (TIOCEXCL) leaves it to the next one.
class PseudoTerminal {
 public:
  // `link`, if not empty, is the path of a symbolic link that leads to the terminal while it is
  // open. It replaces a link that is there, but no other file.
  explicit PseudoTerminal(std::string link = {});
  ~PseudoTerminal();
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  // Opens a new terminal, under another path than the last one. Returns "" or why it is not open.
  std::string open();
  void close();

  bool is_open() const { return master_ >= 0; }

  // To be watched for input; -1 when not open.
  int fd() const { return both_ >= 0 ? both_ : master_; }

  // What other programs open; the last one when not open.
  const std::string& path() const { return path_; }

  // Never blocks. As on a serial line, bytes that nobody reads are lost before long.
  void write(std::string_view bytes);

  // What has arrived, "" when there is nothing.
  std::string read();

 private:
  bool open_pair();
  void watch_closing();
  void see_closing();
  std::string make_link() const;
  void remove_link() const;

  std::string link_;
  std::string path_;
  int master_ = -1;
  int slave_ = -1;    // held so that the terminal outlives the programs that use it
  int closing_ = -1;  // tells of programs that close it
  int both_ = -1;     // is readable when master_ or closing_ is
};

}  // namespace homewarden::os_linux
