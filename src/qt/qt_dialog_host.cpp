#include "qt/qt_dialog_host.hpp"

namespace aerix::qt {

int QtDialogHost::Run(Dialog dialog) {
    auto it = runners_.find(dialog);
    if (it == runners_.end())
        return kDialogUnavailable;
    return it->second(parent_);
}

}  // namespace aerix::qt
