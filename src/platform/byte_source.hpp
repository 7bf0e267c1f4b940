// A stream of bytes from a GPS receiver: a serial device, a local gpsd or a TCP feed. Reads wait
// with a time-out and can be interrupted from another thread, so that a reader ends promptly when
// the port is closed instead of being killed.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>

namespace aerix::platform {

class ByteSource {
  public:
    ByteSource();
    virtual ~ByteSource();
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    // Waits up to timeoutMs for bytes. Returns how many were read (> 0), 0 on a time-out or
    // after Close, -1 on a failure with the system error number in *error. A far end that hangs
    // up is a failure (EIO, or ECONNRESET for a socket that reached its end).
    int Read(char* buffer, std::size_t size, int timeoutMs, int* error);

    // Marks the source closed and wakes a waiting Read. Safe from any thread; the descriptor
    // itself is released by the destructor, when the last user lets go.
    void Close();
    bool IsOpen() const { return open_.load(std::memory_order_acquire); }

  protected:
    // Takes ownership of a descriptor opened non-blocking.
    void Adopt(int fd);
    int Fd() const { return fd_; }
    // What a zero-byte read (end of stream) means: sockets report a hang-up as ECONNRESET.
    virtual int EndOfStreamError() const;

  private:
    int fd_ = -1;
    int wake_ = -1;  // eventfd written by Close
    std::atomic<bool> open_{false};
};

}  // namespace aerix::platform
