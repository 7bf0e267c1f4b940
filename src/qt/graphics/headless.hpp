// Qt drawing without a window, for command-line tools: an offscreen QGuiApplication (unless one
// runs already) and QtGraphics installed as Sys().graphics while the object lives.
#pragma once

#include <memory>

namespace aerix::platform {
class Graphics;
}

namespace aerix::qt {

class HeadlessGraphics {
  public:
    HeadlessGraphics();
    ~HeadlessGraphics();
    HeadlessGraphics(const HeadlessGraphics&) = delete;
    HeadlessGraphics& operator=(const HeadlessGraphics&) = delete;

    platform::Graphics& Graphics();

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace aerix::qt
