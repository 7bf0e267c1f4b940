#include "tools/tool_context.hpp"

#include <iostream>

namespace aerix::tools {

ToolContext::ToolContext() {
    ui_.OnBox([](const platform::RecordedBox& box) {
        std::cerr << (box.caption.empty() ? "" : box.caption + ": ") << box.text << '\n';
    });
}

ToolContext::~ToolContext() = default;

Output& ToolContext::Out() {
    if (!out_)
        out_ = std::make_unique<Output>(std::cout, json);
    return *out_;
}

platform::Platform& ToolContext::OpenPlatform() {
    if (!platform_) {
        platform_ = std::make_unique<platform::Platform>(platform::DataRoot::Choose(home), ui_);
        platform_->ReportLoadProblems();
    }
    return *platform_;
}

}  // namespace aerix::tools
