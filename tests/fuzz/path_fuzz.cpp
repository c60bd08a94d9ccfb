// The path of a request, from the wire to an open file: whatever it says, only what lies in the
// document folder for everybody is opened.

#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>

#include "platform/http/document_folder.h"
#include "platform/http/safe_path.h"
#include "platform/linux/linux_web_folder.h"
#include "tests/platform/scratch_folder.h"

namespace {

namespace fs = std::filesystem;
using namespace homewarden;
using namespace homewarden::http;
using namespace homewarden::testing;

ino_t inode_of(int descriptor) {
  struct stat info {};
  if (::fstat(descriptor, &info) != 0) std::abort();
  return info.st_ino;
}

// A document folder with everything in it that must not be given away.
class Folder {
 public:
  Folder() {
    fs::create_directories(html_ / "a/.git");
    for (const char* secret :
         {"../rmlst.hwd", "htaccess.txt", ".htaccess.new", ".hidden", "a/.git/config"})
      write(secret);
    fs::create_symlink(scratch_.path() / "rmlst.hwd", html_ / "link");
    fs::create_directory_symlink(scratch_.path(), html_ / "up");
    fs::create_hard_link(html_ / "htaccess.txt", html_ / "copy");
    for (const char* document : {"index.html", "a/b.gif"}) {
      write(document);
      struct stat info {};
      if (::stat((html_ / document).c_str(), &info) != 0) std::abort();
      documents_.insert(info.st_ino);
    }
  }

  void ask(std::string_view path) {
    const auto safe = safe_path(path);
    if (!safe) return;
    const auto document = served_.open(*safe);
    if (document && !documents_.contains(inode_of(document->file.get()))) std::abort();
  }

 private:
  void write(const char* file) const { std::ofstream(html_ / file) << file; }

  ScratchFolder scratch_;
  fs::path html_ = scratch_ / "html";
  DocumentFolder served_{std::make_unique<os_linux::LinuxWebFolder>(html_)};
  std::set<ino_t> documents_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Folder folder;
  folder.ask({reinterpret_cast<const char*>(data), size});
  return 0;
}
