// The loading dialog shown by the first switch to the HSI or AERIX view after start or after a
// sector was added: loads the airspace overlay and the navigation database into memory.
#pragma once

namespace aerix {

class LoadingDialogModel {
  public:
    static constexpr const char* kText = "Initialising AERIX arrays - please wait";
    static constexpr int kTimerId = 1;
    static constexpr int kTimerMs = 50;

    // The dialog opens and starts its timer; the work runs on the first tick so that the text is
    // on the screen while the arrays load.
    // The tick: loads the arrays, clears the pending byte; the dialog then ends with 1.
    int OnTimer();
};

}  // namespace aerix
