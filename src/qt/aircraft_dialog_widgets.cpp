// "Fuel plan" over its model in aircraft/: the sums by phase, then either the fuel to load or the
// reserve left by the fuel in the tanks.
#include "qt/aircraft_dialog_widgets.hpp"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QRadioButton>

#include "aircraft/fuel_plan_dialog.hpp"
#include "app/app_state.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/widget_support.hpp"

namespace aerix::qt {

namespace {

class FuelPlanWidget : public DialogFrame {
  public:
    explicit FuelPlanWidget(QWidget* parent)
        : DialogFrame(parent, ToQString(FuelPlanDialog::kTitle)) {
        model_.Open();
        units_ = new QLabel(ToQString(model_.UnitsLabel()), this);
        units_->setObjectName("units");
        Body()->addWidget(units_);

        auto* modes = new QHBoxLayout;
        calculate_ = new QRadioButton(QStringLiteral("Calculate fuel"), this);
        calculate_->setObjectName("calculate");
        loaded_ = new QRadioButton(QStringLiteral("Fuel loaded"), this);
        loaded_->setObjectName("loaded");
        (model_.CalculateChecked() ? calculate_ : loaded_)->setChecked(true);
        modes->addWidget(calculate_);
        modes->addWidget(loaded_);
        Body()->addLayout(modes);

        form_ = new QFormLayout;
        climb_ = AddFigure(form_, QStringLiteral("Climb"), "climb");
        cruise_ = AddFigure(form_, QStringLiteral("Cruise"), "cruise");
        descent_ = AddFigure(form_, QStringLiteral("Descent"), "descent");
        taxi_ = AddFigure(form_, QStringLiteral("Taxi"), "taxi");
        holding_ = AddEntry(form_, QStringLiteral("Holding"), "holding");
        contingency_ = AddEntry(form_, QStringLiteral("% Contingency"), "contingency");
        inTanks_ = AddEntry(form_, QStringLiteral("In tanks"), "inTanks");
        reserve_ = AddFigure(form_, QStringLiteral("Reserve:"), "reserve");
        total_ = AddFigure(form_, QStringLiteral("Total:"), "total");
        for (auto* entry : {holding_, contingency_, inTanks_})
            entry->setInputMethodHints(Qt::ImhDigitsOnly);
        Body()->addLayout(form_);
        Body()->addStretch(1);

        connect(calculate_, &QRadioButton::clicked, this, [this] {
            model_.ChooseCalculate();
            Show();
        });
        connect(loaded_, &QRadioButton::clicked, this, [this] {
            model_.ChooseLoaded();
            Show();
        });
        connect(holding_, &QLineEdit::textEdited, this, [this](const QString& text) {
            model_.SetHolding(ToUtf8(text));
            Show();
        });
        connect(contingency_, &QLineEdit::textEdited, this, [this](const QString& text) {
            model_.SetContingency(ToUtf8(text));
            Show();
        });
        connect(inTanks_, &QLineEdit::textEdited, this, [this](const QString& text) {
            model_.SetInTanks(ToUtf8(text));
            Show();
        });
        Show();
    }

  protected:
    bool OnOk() override {
        model_.Close(kDialogOk);
        return true;
    }
    void OnClose() override { model_.Close(kDialogCancel); }

  private:
    // Shows what the model holds; an entry being typed into already shows its text.
    void Show() {
        climb_->setText(ToQString(model_.Climb()));
        cruise_->setText(ToQString(model_.Cruise()));
        descent_->setText(ToQString(model_.Descent()));
        taxi_->setText(ToQString(model_.Taxi()));
        total_->setText(ToQString(model_.Total()));
        reserve_->setText(ToQString(model_.Reserve()));
        SetEntry(holding_, model_.Holding());
        SetEntry(contingency_, model_.Contingency());
        SetEntry(inTanks_, model_.InTanks());
        bool calc = model_.CalculateFieldsShown();
        form_->setRowVisible(holding_, calc);
        form_->setRowVisible(contingency_, calc);
        form_->setRowVisible(inTanks_, model_.LoadedFieldsShown());
        form_->setRowVisible(reserve_, model_.LoadedFieldsShown());
    }

    static void SetEntry(QLineEdit* entry, const std::string& text) {
        QString shown = ToQString(text);
        if (entry->text() != shown)
            entry->setText(shown);
    }

    FuelPlanDialog model_{g_app.settings, g_app.aircraft};
    QLabel* units_;
    QRadioButton* calculate_;
    QRadioButton* loaded_;
    QFormLayout* form_;
    QLabel *climb_, *cruise_, *descent_, *taxi_, *reserve_, *total_;
    QLineEdit *holding_, *contingency_, *inTanks_;
};

}  // namespace

void RegisterAircraftDialogs(QtDialogHost& host) {
    host.Register(Dialog::Fuel, RunWidget<FuelPlanWidget>);
    RegisterAircraftSetupDialogs(host);
    RegisterWeightBalanceDialogs(host);
}

}  // namespace aerix::qt
