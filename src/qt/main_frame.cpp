#include "qt/main_frame.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLocalSocket>
#include <QPainter>
#include <QUrl>
#include <QVBoxLayout>

#include "app/app_state.hpp"
#include "app/command_ids.hpp"
#include "qt/graphics/qpainter_canvas.hpp"

namespace aerix::qt {

// The view area: painted by the main window's logic in logical pixels; taps are pen events.
class ViewArea : public QWidget {
  public:
    explicit ViewArea(MainFrame* frame) : QWidget(frame), frame_(frame) {
        setObjectName("view");
        setFixedSize(MainFrame::kWidth, MainFrame::kViewHeight);
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        QPainterCanvas canvas(painter, width(), height());
        frame_->Logic().OnPaint(canvas);
        frame_->UpdateReadouts();
        if (frame_->onFirstPaint) {
            auto first = std::move(frame_->onFirstPaint);
            frame_->onFirstPaint = nullptr;
            first();
        }
    }
    void mousePressEvent(QMouseEvent* event) override {
        auto p = event->position().toPoint();
        frame_->Logic().OnPenDown(p.x(), p.y());
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!(event->buttons() & Qt::LeftButton))
            return;
        auto p = event->position().toPoint();
        frame_->Logic().OnPenMove(p.x(), p.y());
    }

  private:
    MainFrame* frame_;
};

unsigned VirtualKeyFor(int qtKey) {
    switch (qtKey) {
        case Qt::Key_F1:
            return vk::kButton1;
        case Qt::Key_F2:
            return vk::kButton2;
        case Qt::Key_F3:
            return vk::kButton3;
        case Qt::Key_F4:
            return vk::kButton4;
        case Qt::Key_Left:
            return vk::kLeft;
        case Qt::Key_Up:
            return vk::kUp;
        case Qt::Key_Right:
            return vk::kRight;
        case Qt::Key_Down:
            return vk::kDown;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return vk::kAction;
        default:
            return 0;
    }
}

MainFrame::MainFrame(DialogHost& dialogs, QString instanceKey)
    : logic_(std::make_unique<MainWindow>(*this, dialogs)), instanceKey_(std::move(instanceKey)) {
    setObjectName("mainWindow");
    setWindowTitle(QStringLiteral("Aerix"));
    setFixedSize(kWidth, kHeight);
    setFocusPolicy(Qt::StrongFocus);
}

MainFrame::~MainFrame() = default;

QWidget* MainFrame::View() const {
    return view_;
}

QAction* MainFrame::ActionFor(unsigned id) const {
    auto it = actions_.find(id);
    return it == actions_.end() ? nullptr : it->second;
}

bool MainFrame::RaiseOtherInstance() {
    if (instanceKey_.isEmpty())
        return false;
    {
        QLocalSocket socket;
        socket.connectToServer(instanceKey_);
        if (socket.waitForConnected(500)) {
            socket.write("raise\n");
            socket.waitForBytesWritten(500);
            socket.disconnectFromServer();
            return true;
        }
    }
    // Nobody answers: a channel left by a crashed run is taken over.
    QLocalServer::removeServer(instanceKey_);
    server_ = new QLocalServer(this);
    server_->setSocketOptions(QLocalServer::UserAccessOption);
    server_->listen(instanceKey_);
    connect(server_, &QLocalServer::newConnection, this, [this] {
        while (auto* peer = server_->nextPendingConnection()) {
            connect(peer, &QLocalSocket::disconnected, peer, &QObject::deleteLater);
            Raise();
        }
    });
    return false;
}

void MainFrame::Raise() {
    showNormal();
    raise();
    activateWindow();
}

bool MainFrame::CreateMainWindow() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);

    title_ = new QLabel(QStringLiteral("Aerix"), this);
    title_->setObjectName("navigationBar");
    title_->setFixedHeight(kTitleHeight);
    title_->setStyleSheet(
        "#navigationBar { background: #0a246a; color: white; font-weight: bold; padding-left: "
        "4px; }");
    column->addWidget(title_);

    view_ = new ViewArea(this);
    column->addWidget(view_);

    auto* bottom = new QWidget(this);
    bottom->setFixedHeight(kMenuHeight);
    auto* row = new QHBoxLayout(bottom);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    menuBar_ = new QMenuBar(bottom);
    menuBar_->setNativeMenuBar(false);
    // Five menus and three buttons share 240 pixels.
    menuBar_->setStyleSheet(
        "QMenuBar { spacing: 0px; } QMenuBar::item { padding: 3px 3px; margin: 0px; }");
    row->addWidget(menuBar_, 1);
    const std::pair<unsigned, const char*> buttons[] = {
        {cmd::kButtonUp, "\u25B2"}, {cmd::kButtonDown, "\u25BC"}, {cmd::kButtonAction, "\u25C6"}};
    for (auto [id, glyph] : buttons) {
        auto* button = new QToolButton(bottom);
        button->setObjectName(QStringLiteral("button%1").arg(id));
        button->setText(QString::fromUtf8(glyph));
        button->setFixedSize(19, kMenuHeight - 2);
        button->setFocusPolicy(Qt::NoFocus);
        connect(button, &QToolButton::clicked, this, [this, id = id] { logic_->OnCommand(id); });
        row->addWidget(button);
    }
    column->addWidget(bottom);
    BuildMenu();
    return true;
}

void MainFrame::BuildMenu() {
    std::map<QString, QMenu*> menus;
    auto menuFor = [&](const MenuEntry& e) {
        QString top = QString::fromUtf8(e.menu.data(), static_cast<qsizetype>(e.menu.size()));
        QMenu*& m = menus[top];
        if (!m)
            m = menuBar_->addMenu(top);
        if (e.submenu.empty())
            return m;
        QString sub = QString::fromUtf8(e.submenu.data(), static_cast<qsizetype>(e.submenu.size()));
        QMenu*& s = menus[top + "/" + sub];
        if (!s)
            s = m->addMenu(sub);
        return s;
    };
    for (const auto& e : MenuTable()) {
        QString caption =
            QString::fromUtf8(e.caption.data(), static_cast<qsizetype>(e.caption.size()));
        QAction* action = menuFor(e)->addAction(caption);
        action->setObjectName(QStringLiteral("cmd%1").arg(e.id));
        action->setEnabled(logic_->Menu().Enabled(e.id));
        connect(action, &QAction::triggered, this, [this, id = e.id] { logic_->OnCommand(id); });
        actions_[e.id] = action;
    }
    logic_->Menu().OnChange([this](unsigned id, bool enabled) {
        if (auto* action = ActionFor(id))
            action->setEnabled(enabled);
    });
}

void MainFrame::ShowMainWindow() {
    show();
    raise();
    activateWindow();
    setFocus();
}

namespace {
const QRect kLatLonReadoutAt(42, 44, 158, 16);
}  // namespace

void MainFrame::CreateChildWindows() {
    auto makeStatic = [this](QRect at, const char* name) {
        auto* label = new QLabel(view_);
        label->setObjectName(name);
        label->setGeometry(at);
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
        label->show();
        return label;
    };
    latLon_ = makeStatic(kLatLonReadoutAt, "latLonReadout");
    latLon_->setAlignment(Qt::AlignCenter);
    latLon_->setStyleSheet("background: white; border: 1px solid black;");
    // The 24 characters of a position fit the narrower places over the instruments too.
    QFont small = latLon_->font();
    small.setPixelSize(10);
    latLon_->setFont(small);
    latLon_->hide();
    scale_ = makeStatic(QRect(0, 0, 1, 1), "scaleReadout");
    topStatus_ = makeStatic(QRect(0, 0, 240, 21), "topStatus");
    bottomStatus_ = makeStatic(QRect(0, 248, 240, 21), "bottomStatus");
    list_ = new QListWidget(view_);
    list_->setObjectName("listBox");
    list_->setGeometry(0, 59, 240, 90);
    list_->setFocusPolicy(Qt::NoFocus);
    // Shown, but it only covers the view while it holds lines.
    list_->setFrameShape(QFrame::NoFrame);
    list_->setStyleSheet("QListWidget { background: transparent; }");
    list_->setAttribute(Qt::WA_TransparentForMouseEvents);
    list_->show();
}

void MainFrame::ShowLatLonReadout(bool shown) {
    if (!latLon_)
        return;
    // Over the instruments the readout would hide the card: it goes below it instead, under
    // the AERIX rose beside the range box, between the HSI's bottom corners.
    QRect at = kLatLonReadoutAt;
    if (g_app.settings.ViewMode == kViewInstruments)
        at = g_app.view.InstrumentAerix ? QRect(2, 199, 174, 14) : QRect(51, 238, 138, 16);
    latLon_->setGeometry(at);
    latLon_->setVisible(shown);
}

void MainFrame::ShowScaleReadout(bool shown) {
    if (scale_)
        scale_->setVisible(shown);
}

void MainFrame::Post(std::function<void()> work) {
    QMetaObject::invokeMethod(this, std::move(work), Qt::QueuedConnection);
}

void MainFrame::Beep() {
    QApplication::beep();
}

bool MainFrame::OpenHelp(const std::filesystem::path& page) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(page.string())));
}

void MainFrame::Quit(int code) {
    quitting_ = true;
    QCoreApplication::exit(code);
}

void MainFrame::SetTitleText(const QString& text) {
    if (title_)
        title_->setText(text);
}

void MainFrame::InvalidateView() {
    if (view_)
        view_->update();
}

void MainFrame::UpdateReadouts() {
    if (latLon_ && latLon_->isVisible()) {
        QString text = QString::fromStdU16String(std::u16string(g_app.gps.Fix.positionText.view()));
        if (latLon_->text() != text)
            latLon_->setText(text);
    }
}

void MainFrame::keyReleaseEvent(QKeyEvent* event) {
    if (event->isAutoRepeat())
        return;
    if (unsigned key = VirtualKeyFor(event->key())) {
        logic_->OnKeyUp(key);
        return;
    }
    QWidget::keyReleaseEvent(event);
}

void MainFrame::closeEvent(QCloseEvent* event) {
    // Closing the window is the Exit command.
    if (!quitting_)
        logic_->OnCommand(cmd::kExit);
    event->accept();
}

}  // namespace aerix::qt
