// The three chart dialogs as toolkit-free models: "Load bitmap (to calibrate)", "Calibrate" and
// "Calibrated maps". The Qt side lays out the controls and forwards each action here.
#pragma once

#include <string>
#include <vector>

#include "views/view_state.hpp"

namespace aerix {

inline constexpr const char* kNoMapsOnCardText = "No maps on card";
inline constexpr const char* kCalibratedText =
    "Map is now calibrated and will be loaded/unloaded into 'MAP' view when appropiate";
inline constexpr const char* kDeleteMapText = "Delete this map from list";

// "Load bitmap (to calibrate)": Open() fills both lists; selecting acts at once.
class LoadBitmapDialog {
  public:
    // The storage places, the one chosen and the chart taken go into view.
    explicit LoadBitmapDialog(ViewState& view) : view_(view) {}
    void Open();
    const std::vector<std::u16string>& Storage() const { return view_.StorageList; }
    const std::vector<std::u16string>& Bitmaps() const { return bitmaps_; }
    void SelectStorage(int index);
    // Takes the bitmap as the chart to calibrate; the dialog then closes with 1.
    int SelectBitmap(int index);
    int Cancel() const { return 2; }

  private:
    void FillBitmaps();
    ViewState& view_;
    std::vector<std::u16string> bitmaps_;
    // The search's find data outlives a search: a failed one leaves the last name found.
    std::u16string findData_;
};

// The files of a folder matching a pattern such as "\My Documents\aerix\*.bmp" (letter case
// ignored). A pattern for bitmaps finds PNG and JPEG charts too.
std::vector<std::u16string> FindFiles(std::u16string_view pattern, bool* searched);

// "Calibrate": the latitude and longitude of the point under the cross.
class CalibrateDialog {
  public:
    // The corner is marked on, and the calibration completed in, view.
    explicit CalibrateDialog(ViewState& view) : view_(view) {}
    std::u16string latDegrees, latMinutes, lonDegrees, lonMinutes;
    std::u16string latHemisphere = u"N", lonHemisphere = u"E";
    void ToggleLatHemisphere();
    void ToggleLonHemisphere();
    // Stores the corner; with both corners entered completes and stores the calibration.
    // Returns the dialog's result (1); 0, after "<field>: enter a number", when a field holds
    // something other than a number (the dialog stays open).
    int Ok();
    // Clears both corner flags; 2.
    int Cancel();

  private:
    ViewState& view_;
};

// Completes a calibration from the two reference points in view.MapCalibration and the chart
// size: the limits 35 pixels inside the edges and ScaleNumber. Numbers that place no chart
// (corners on one parallel or meridian) are told and nothing is stored.
void CompleteCalibration(ViewState& view);

// "Calibrated maps": the charts of "Maps", by file name.
class CalibratedMapsDialog {
  public:
    void Open();
    const std::vector<std::u16string>& Names() const { return names_; }
    // Asks, then removes entry `index` (-1: no selection) and the record at that position.
    void Remove(int index);
    void Close();

  private:
    std::vector<std::u16string> names_;
};

}  // namespace aerix
