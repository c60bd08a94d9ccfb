#pragma once

namespace homewarden::os_linux {

// Tells whether another program has a file open to write into it, by a lease, which local disks
// give the owner of a file. Whoever opens it to write while one of these lives waits for its end.
class WriterWatch {
 public:
  // The descriptor must be open for reading as long as this lives; for one that is not open nothing
  // can be told.
  explicit WriterWatch(int descriptor);
  WriterWatch(const WriterWatch&) = delete;
  WriterWatch& operator=(const WriterWatch&) = delete;
  ~WriterWatch();

  // Where it cannot, nobody seems to write.
  bool can_tell() const { return leased_ || found_writer_; }
  bool found_writer() const { return found_writer_; }
  // True too when somebody has begun to open it since.
  bool somebody_writes() const;

 private:
  const int descriptor_;
  bool leased_ = false;
  bool found_writer_ = false;
};

}  // namespace homewarden::os_linux
