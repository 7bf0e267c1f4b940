// The main window on Qt: 240 x 320 logical pixels with the navigation-bar title on top, the view
// area with its status child windows, and the menu bar with its three tool buttons at the bottom.
// Events go to the toolkit-free MainWindow; this class is its WindowHost.
#pragma once

#include <QLabel>
#include <QListWidget>
#include <QLocalServer>
#include <QMenuBar>
#include <QToolButton>
#include <QWidget>
#include <map>
#include <memory>

#include "app/main_window.hpp"

namespace aerix::qt {

class ViewArea;

class MainFrame : public QWidget, public WindowHost {
    Q_OBJECT
  public:
    static constexpr int kWidth = 240;
    static constexpr int kHeight = 320;
    static constexpr int kTitleHeight = 26;
    static constexpr int kMenuHeight = 26;
    static constexpr int kViewHeight = kHeight - kTitleHeight - kMenuHeight;

    // instanceKey names the single-instance channel (per user and data root).
    MainFrame(DialogHost& dialogs, QString instanceKey);
    ~MainFrame() override;

    MainWindow& Logic() { return *logic_; }
    QLabel* TitleLabel() { return title_; }
    QMenuBar* Menu() { return menuBar_; }
    QAction* ActionFor(unsigned id) const;
    QWidget* View() const;

    // WindowHost
    bool RaiseOtherInstance() override;
    bool CreateMainWindow() override;
    void ShowMainWindow() override;
    void CreateChildWindows() override;
    void ShowLatLonReadout(bool shown) override;
    void ShowScaleReadout(bool shown) override;
    void Post(std::function<void()> work) override;
    void Beep() override;
    bool OpenHelp(const std::filesystem::path& page) override;
    void Quit(int code) override;

    void SetTitleText(const QString& text);
    // The view area is repainted (from any thread through the Ui).
    void InvalidateView();
    // Once the first paint is on the screen.
    std::function<void()> onFirstPaint;

  protected:
    void keyReleaseEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    friend class ViewArea;
    void BuildMenu();
    // The latitude/longitude readout shows the fix just painted.
    void UpdateReadouts();
    void Raise();

    std::unique_ptr<MainWindow> logic_;
    QString instanceKey_;
    QLocalServer* server_ = nullptr;
    QLabel* title_ = nullptr;
    ViewArea* view_ = nullptr;
    QMenuBar* menuBar_ = nullptr;
    std::map<unsigned, QAction*> actions_;
    QLabel* latLon_ = nullptr;
    QLabel* scale_ = nullptr;
    QLabel* topStatus_ = nullptr;
    QLabel* bottomStatus_ = nullptr;
    QListWidget* list_ = nullptr;
    bool quitting_ = false;
};

// Qt key to the virtual-key code the main window handles (0 for keys it ignores): F1-F4 are the
// hardware buttons 193-196, the arrows the direction keys, Enter the action key.
unsigned VirtualKeyFor(int qtKey);

}  // namespace aerix::qt
