// "GPS setup" (protocol, port, baud rate) and "GPS data" (the fix, repainted each second) over
// their models in gps/.
#include "qt/gps_dialog_widgets.hpp"

#include <QComboBox>
#include <QFormLayout>
#include <QTimer>

#include "app/app_state.hpp"
#include "gps/gps_data_dialog.hpp"
#include "gps/gps_setup_dialog.hpp"
#include "platform/services.hpp"
#include "platform/ui.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/widget_support.hpp"

namespace aerix::qt {

namespace {

class GpsSetupWidget : public DialogFrame {
  public:
    explicit GpsSetupWidget(QWidget* parent) : DialogFrame(parent, kGpsSetupTitle) {
        auto* form = new QFormLayout;
        auto* protocol = new QLabel(kGpsProtocolText, this);
        protocol->setObjectName("protocol");
        form->addRow(QStringLiteral("Protocol"), protocol);

        // The port list also takes a typed name: a device path or tcp:HOST:PORT.
        port_ = new QComboBox(this);
        port_->setObjectName("port");
        port_->setEditable(true);
        port_->setInsertPolicy(QComboBox::NoInsert);
        for (const auto& item : model_.PortItems())
            port_->addItem(ToQString(item));
        port_->setCurrentIndex(model_.PortSelection());
        port_->setEditText(ToQString(model_.PortText()));
        port_->lineEdit()->setPlaceholderText(kTcpPortHint);
        form->addRow(QStringLiteral("Port"), port_);

        baud_ = new QComboBox(this);
        baud_->setObjectName("baud");
        for (const auto& item : model_.BaudItems())
            baud_->addItem(ToQString(item));
        baud_->setCurrentIndex(model_.BaudSelection());
        form->addRow(QStringLiteral("Baud rate"), baud_);
        Body()->addLayout(form);
        Body()->addStretch(1);

        connect(port_, &QComboBox::activated, this,
                [this](int index) { model_.SelectPort(index); });
        connect(port_, &QComboBox::editTextChanged, this,
                [this](const QString& text) { model_.SetPortText(text.toStdU16String()); });
        connect(baud_, &QComboBox::currentIndexChanged, this,
                [this](int index) { model_.SelectBaud(index); });
    }

  protected:
    bool OnOk() override { return model_.Ok(); }
    void OnClose() override { model_.Cancel(); }

  private:
    GpsSetupDialogModel model_{g_app.gps, g_app.settings};
    QComboBox* port_;
    QComboBox* baud_;
};

class GpsDataWidget : public ClosingModelFrame<GpsDataDialogModel> {
  public:
    explicit GpsDataWidget(QWidget* parent)
        : ClosingModelFrame<GpsDataDialogModel>(parent, kGpsDataTitle) {
        platform::Sys().ui->SetTitle(kGpsDataTitle);
        auto* form = new QFormLayout;
        position_ = AddFigure(form, QStringLiteral("Position"), "position");
        speed_ = AddFigure(form, QStringLiteral("Ground speed"), "speed");
        track_ = AddFigure(form, QStringLiteral("Track"), "track");
        QFont large = font();
        large.setPointSize(large.pointSize() * 3 / 2);
        for (auto* figure : {position_, speed_, track_})
            figure->setFont(large);
        Body()->addLayout(form);
        Body()->addStretch(1);
        auto* timer = new QTimer(this);
        timer->setObjectName("repaint");
        timer->setInterval(kGpsDataTimerMs);
        connect(timer, &QTimer::timeout, this, [this] { Repaint(); });
        timer->start();
        Repaint();
    }

  private:
    void Repaint() {
        GpsDataTexts texts = model_.Texts(g_app.gps);
        position_->setText(ToQString(texts.position));
        speed_->setText(ToQString(texts.speed));
        track_->setText(ToQString(texts.track));
    }

    QLabel *position_, *speed_, *track_;
};

}  // namespace

void RegisterGpsDialogs(QtDialogHost& host) {
    host.Register(Dialog::GpsSetup, RunWidget<GpsSetupWidget>);
    host.Register(Dialog::GpsData, RunWidget<GpsDataWidget>);
}

}  // namespace aerix::qt
