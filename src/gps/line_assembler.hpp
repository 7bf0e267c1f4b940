// Bytes into lines, as the receiver's reader and playback both read them: everything up to a line
// feed is one line (the carriage return stays in it). A line longer than the buffer is dropped
// whole, never written past the end.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace aerix {

inline constexpr std::size_t kNmeaLineBufferSize = 1000;

class LineAssembler {
  public:
    // Adds one byte. True when it was the line feed that completes a line; Line() then holds the
    // bytes before it (or Dropped() is true for an over-long line) until the next Push.
    bool Push(char byte) noexcept {
        if (complete_) {
            length_ = 0;
            dropped_ = false;
            complete_ = false;
        }
        if (byte == '\n') {
            complete_ = true;
            return true;
        }
        if (length_ < buffer_.size())
            buffer_[length_++] = byte;
        else
            dropped_ = true;
        return false;
    }

    // The received bytes of the completed line, exactly (empty when dropped).
    std::string_view Line() const noexcept {
        return dropped_ ? std::string_view() : std::string_view(buffer_.data(), length_);
    }
    bool Dropped() const noexcept { return dropped_; }

  private:
    std::array<char, kNmeaLineBufferSize> buffer_{};
    std::size_t length_ = 0;
    bool dropped_ = false;
    bool complete_ = false;
};

}  // namespace aerix
