#include "app/manual.hpp"

#include "app/main_window.hpp"

#include <filesystem>
#include <system_error>

#include "platform/data_root.hpp"
#include "platform/services.hpp"

namespace aerix {

bool InstallManual() {
    const platform::DataRoot* root = platform::Sys().root;
    if (!root)
        return false;
    auto page = root->Resolve(kManualPage);
    std::error_code ec;
    if (std::filesystem::exists(page, ec))
        return true;
    auto source = platform::ResourcePath("Manual.htm");
    if (!std::filesystem::exists(source, ec))
        return false;
    page = root->ResolveForWrite(kManualPage);
    return std::filesystem::copy_file(source, page, ec) && !ec;
}

}  // namespace aerix
