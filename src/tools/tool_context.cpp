#include "tools/tool_context.hpp"

#include <iostream>

#include "store/record_store.hpp"

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

platform::Platform& ToolContext::OpenStore() {
    platform::Platform& p = OpenPlatform();
    // Touching the store opens it; a damaged file is reported, never replaced.
    p.Store().EnumDatabases(platform::kObjectStoreVolume);
    platform::StoreError error = platform::LastStoreError();
    if (error == platform::StoreError::kInvalidFile)
        throw ToolFailure("Could not open database: " + p.Store().StoreFile().string() +
                          " is not a valid database file (left untouched)");
    if (error != platform::StoreError::kNone)
        throw ToolFailure(StoreFailureText(error, "Could not open database"));
    return p;
}

void ToolContext::FailWithLastBox(std::size_t before, const std::string& fallback) {
    auto texts = ui_.BoxTexts();
    if (texts.size() > before)
        throw ToolFailure(texts.back());
    throw ToolFailure(fallback);
}

std::uint32_t ZeroBased(int index, std::uint32_t count, const char* what) {
    if (index < 1 || static_cast<std::uint32_t>(index) > count)
        throw ToolFailure(std::string("no ") + what + " " + std::to_string(index) + " (there are " +
                          std::to_string(count) + ")");
    return static_cast<std::uint32_t>(index - 1);
}

bool ToolContext::StoreFailureShown() const {
    for (const std::string& text : ui_.BoxTexts()) {
        if (text.starts_with("Could not open database") ||
            text.starts_with("Record write failed") || text == kDataLockedText ||
            text == kDataReadOnlyText)
            return true;
    }
    return false;
}

}  // namespace aerix::tools
