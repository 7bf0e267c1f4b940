// The E6b utilities over their models in utilities/: "Timer", "Conversions", "Sunrise/sunset",
// and the flight-computer dialogs (crosswind, holding, density and true altitude, logbook).
#include "qt/utility_dialog_widgets.hpp"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QTimer>
#include <array>
#include <functional>
#include <vector>

#include "app/app_state.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/widget_support.hpp"
#include "utilities/altitude_dialogs.hpp"
#include "utilities/conversions_dialog.hpp"
#include "utilities/crosswind.hpp"
#include "utilities/holding.hpp"
#include "utilities/logbook.hpp"
#include "utilities/stopwatch.hpp"
#include "utilities/sun_dialog.hpp"

namespace aerix::qt {

namespace {

QPushButton* AddButton(QBoxLayout* row, QWidget* owner, const QString& text, const char* name) {
    auto* button = new QPushButton(text, owner);
    button->setObjectName(name);
    row->addWidget(button);
    return button;
}

// "Timer": a precise single-shot timer armed for the end of each period; the model counts from
// the monotonic clock, so a late wake-up shows the right time and never drifts. Only X closes it.
class TimerWidget : public DialogFrame {
  public:
    explicit TimerWidget(QWidget* parent)
        : DialogFrame(parent, ToQString(StopwatchDialog::kCaption), false, true) {
        model_.Open();
        display_ = new QLabel(this);
        display_->setObjectName("display");
        display_->setAlignment(Qt::AlignCenter);
        QFont large = font();
        if (large.pixelSize() > 0)  // the program's font is sized in pixels
            large.setPixelSize(large.pixelSize() * 2);
        else
            large.setPointSizeF(large.pointSizeF() * 2);
        display_->setFont(large);
        Body()->addWidget(display_);
        auto* row = new QHBoxLayout;
        auto* start = AddButton(row, this, QStringLiteral("Start"), "start");
        auto* stop = AddButton(row, this, QStringLiteral("Stop"), "stop");
        Body()->addLayout(row);
        Body()->addStretch(1);
        timer_ = new QTimer(this);
        timer_->setObjectName("tick");
        timer_->setTimerType(Qt::PreciseTimer);
        timer_->setSingleShot(true);
        timer_->setInterval(StopwatchDialog::kTimerPeriodMs);
        connect(timer_, &QTimer::timeout, this, [this] {
            model_.Update();
            Show();
            if (model_.Running())
                timer_->start(static_cast<int>(model_.MsToNextTick()));
        });
        connect(start, &QPushButton::clicked, this, [this] {
            model_.Start();
            timer_->start(static_cast<int>(model_.MsToNextTick()));  // a fresh period each Start
            Show();
        });
        connect(stop, &QPushButton::clicked, this, [this] {
            model_.Stop();
            timer_->stop();
        });
        Show();
    }

  protected:
    void OnClose() override {
        timer_->stop();
        model_.Cancel();
    }

  private:
    void Show() { display_->setText(ToQString(model_.Display())); }

    StopwatchDialog model_{g_app.stopwatch};
    QLabel* display_;
    QTimer* timer_;
};

// "Conversions": a kind selector and the kind's fields, each labelled with its unit; the others
// are rewritten on each edit. A text that is not a number is named in the line below and
// gets the error box when the pilot leaves the field.
class ConversionsWidget : public ClosingModelFrame<ConversionsDialog> {
  public:
    explicit ConversionsWidget(QWidget* parent)
        : ClosingModelFrame<ConversionsDialog>(parent, ToQString(ConversionsDialog::kTitle)) {
        model_.Open();
        kind_ = new QComboBox(this);
        kind_->setObjectName("kind");
        kind_->addItems({QStringLiteral("Volume"), QStringLiteral("Mass"),
                         QStringLiteral("Distance"), QStringLiteral("Temperature"),
                         QStringLiteral("Pressure"), QStringLiteral("Speed"),
                         QStringLiteral("Fuel")});
        kind_->setCurrentIndex(model_.Kind() - 1);
        Body()->addWidget(kind_);
        // A label that leaves its field too little room beside it on the 240-pixel screen (a
        // larger font) puts the field on the row under it.
        form_ = new QFormLayout;
        form_->setRowWrapPolicy(QFormLayout::WrapLongRows);
        form_->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        static constexpr const char* kNames[] = {"a", "b", "c", "sg", "kg", "lb"};
        for (int f = 0; f < ConversionsDialog::kFieldCount; ++f) {
            auto field = static_cast<ConversionsDialog::Field>(f);
            labels_[f] = new QLabel(this);
            labels_[f]->setObjectName(QString::fromUtf8(kNames[f]) + QStringLiteral("Label"));
            fields_[f] = new QLineEdit(this);
            fields_[f]->setObjectName(kNames[f]);
            fields_[f]->setMaxLength(static_cast<int>(ConversionsDialog::kReadLength));
            form_->addRow(labels_[f], fields_[f]);
            connect(fields_[f], &QLineEdit::textEdited, this, [this, field](const QString& text) {
                model_.Edit(field, ToUtf8(text));
                Show();
            });
            connect(fields_[f], &QLineEdit::editingFinished, this,
                    [this, field] { model_.Leave(field); });
        }
        Body()->addLayout(form_);
        problem_ = new QLabel(this);
        problem_->setObjectName("problem");
        problem_->setWordWrap(true);
        problem_->setStyleSheet(QStringLiteral("color: #c00000;"));
        Body()->addWidget(problem_);
        Body()->addStretch(1);
        connect(kind_, &QComboBox::currentIndexChanged, this, [this](int index) {
            model_.SetKind(static_cast<ConversionKind>(index + 1));
            Show();
        });
        Show();
    }

  private:
    void Show() {
        for (int f = 0; f < ConversionsDialog::kFieldCount; ++f) {
            auto field = static_cast<ConversionsDialog::Field>(f);
            form_->setRowVisible(fields_[f], model_.Visible(field));
            labels_[f]->setText(ToQString(model_.Label(field)));
            QString text = ToQString(model_.Text(field));
            if (fields_[f]->text() != text)
                fields_[f]->setText(text);
        }
        problem_->setText(ToQString(model_.Problem()));
    }

    QComboBox* kind_;
    QFormLayout* form_;
    QLabel* problem_;
    std::array<QLabel*, ConversionsDialog::kFieldCount> labels_{};
    std::array<QLineEdit*, ConversionsDialog::kFieldCount> fields_{};
};

// "Sunrise/sunset": the position in degrees, minutes and hundredths with hemisphere buttons.
class SunWidget : public ClosingModelFrame<SunDialog> {
  public:
    explicit SunWidget(QWidget* parent)
        : ClosingModelFrame<SunDialog>(parent, ToQString(SunDialog::kTitle)) {
        model_.Open(g_app.gps.Fix.latitude, g_app.gps.Fix.longitude);
        date_ = new QLabel(this);
        date_->setObjectName("date");
        Body()->addWidget(date_);
        static constexpr const char* kNames[] = {"latDeg", "latMin", "latHun",
                                                 "lonDeg", "lonMin", "lonHun"};
        auto* grid = new QFormLayout;
        for (int half = 0; half < 2; ++half) {
            auto* row = new QHBoxLayout;
            for (int i = 0; i < 3; ++i) {
                int f = half * 3 + i;
                auto field = static_cast<SunDialog::Field>(f);
                fields_[f] = new QLineEdit(this);
                fields_[f]->setObjectName(kNames[f]);
                fields_[f]->setMaximumWidth(40);
                row->addWidget(fields_[f]);
                connect(fields_[f], &QLineEdit::textEdited, this,
                        [this, field](const QString& text) {
                            model_.Edit(field, ToUtf8(text));
                            Show();
                        });
            }
            auto* hemisphere = new QPushButton(this);
            hemisphere->setFixedWidth(30);
            hemisphere->setObjectName(half == 0 ? "latHemisphere" : "lonHemisphere");
            row->addWidget(hemisphere);
            hemispheres_[half] = hemisphere;
            grid->addRow(half == 0 ? QStringLiteral("Latitude") : QStringLiteral("Longitude"), row);
        }
        connect(hemispheres_[0], &QPushButton::clicked, this, [this] {
            model_.ToggleLatitudeHemisphere();
            Show();
        });
        connect(hemispheres_[1], &QPushButton::clicked, this, [this] {
            model_.ToggleLongitudeHemisphere();
            Show();
        });
        sunrise_ = AddFigure(grid, QStringLiteral("Sunrise (UTC)"), "sunrise");
        sunset_ = AddFigure(grid, QStringLiteral("Sunset (UTC)"), "sunset");
        Body()->addLayout(grid);
        auto* row = new QHBoxLayout;
        auto* compute = AddButton(row, this, QStringLiteral("Compute"), "compute");
        Body()->addLayout(row);
        Body()->addStretch(1);
        connect(compute, &QPushButton::clicked, this, [this] {
            model_.Compute();
            Show();
        });
        Show();
    }

  private:
    void Show() {
        for (int f = 0; f < SunDialog::kFieldCount; ++f) {
            QString text = ToQString(model_.Text(static_cast<SunDialog::Field>(f)));
            if (fields_[f]->text() != text)
                fields_[f]->setText(text);
        }
        // The model asks for the focus once (a field held to its maximum).
        if (model_.Focus() != SunDialog::kNoField) {
            fields_[model_.Focus()]->setFocus();
            model_.SetFocus(SunDialog::kNoField);
        }
        hemispheres_[0]->setText(QString(QChar(model_.LatitudeHemisphere())));
        hemispheres_[1]->setText(QString(QChar(model_.LongitudeHemisphere())));
        date_->setText(ToQString(model_.DateLine()));
        sunrise_->setText(ToQString(model_.SunriseText()));
        sunset_->setText(ToQString(model_.SunsetText()));
    }

    QLabel* date_;
    std::array<QLineEdit*, SunDialog::kFieldCount> fields_{};
    std::array<QPushButton*, 2> hemispheres_{};
    QLabel *sunrise_, *sunset_;
};

// The flight-computer dialogs share one shape: entry fields bound to the model's strings, a
// "Compute" button and result lines.
template <typename Model>
class CalculatorWidget : public DialogFrame {
  public:
    struct Entry {
        const char* label;
        const char* name;
        std::string Model::*field;
    };
    struct Result {
        const char* name;
        const std::string& (Model::*text)() const;
    };

    CalculatorWidget(QWidget* parent, std::vector<Entry> entries, std::vector<Result> results,
                     bool Model::*toggle = nullptr, const char* toggleText = nullptr)
        : DialogFrame(parent, ToQString(Model::kTitle)) {
        model_.Open();
        auto* form = new QFormLayout;
        for (const auto& e : entries) {
            auto* entry =
                AddEntry(form, QString::fromUtf8(e.label), e.name, ToQString(model_.*(e.field)));
            auto field = e.field;
            connect(entry, &QLineEdit::textEdited, this,
                    [this, field](const QString& text) { model_.*field = ToUtf8(text); });
        }
        if (toggle) {
            auto* box = new QCheckBox(QString::fromUtf8(toggleText), this);
            box->setObjectName("toggle");
            box->setChecked(model_.*toggle);
            form->addRow(box);
            connect(box, &QCheckBox::toggled, this,
                    [this, toggle](bool on) { model_.*toggle = on; });
        }
        Body()->addLayout(form);
        auto* row = new QHBoxLayout;
        auto* compute = AddButton(row, this, QStringLiteral("Compute"), "compute");
        Body()->addLayout(row);
        for (const auto& r : results) {
            auto* line = new QLabel(this);
            line->setObjectName(r.name);
            QFont bold = line->font();
            bold.setBold(true);
            line->setFont(bold);
            Body()->addWidget(line);
            lines_.push_back({line, r.text});
        }
        Body()->addStretch(1);
        connect(compute, &QPushButton::clicked, this, [this] {
            model_.Compute();
            for (auto& [line, text] : lines_)
                line->setText(ToQString((model_.*text)()));
        });
    }

  protected:
    bool OnOk() override {
        model_.Close();
        return true;
    }
    void OnClose() override { model_.Close(); }

  private:
    Model model_;
    std::vector<std::pair<QLabel*, const std::string& (Model::*)() const>> lines_;
};

int RunCrosswind(QWidget* parent) {
    using W = CalculatorWidget<CrosswindDialog>;
    W dialog(parent,
             {{"Runway", "runway", &CrosswindDialog::runway},
              {"Wind direction (\u00B0M)", "windDirection", &CrosswindDialog::windDirection},
              {"Wind speed (kt)", "windSpeed", &CrosswindDialog::windSpeed}},
             {{"headwind", &CrosswindDialog::HeadwindText},
              {"crosswind", &CrosswindDialog::CrosswindText}});
    return dialog.Run();
}

int RunHolding(QWidget* parent) {
    using W = CalculatorWidget<HoldingDialog>;
    W dialog(parent,
             {{"Inbound course (\u00B0M)", "inboundCourse", &HoldingDialog::inboundCourse},
              {"Heading to fix (\u00B0M)", "heading", &HoldingDialog::heading},
              {"Altitude (ft)", "altitude", &HoldingDialog::altitude},
              {"TAS (kt)", "tas", &HoldingDialog::tas},
              {"Wind direction (\u00B0M)", "windDirection", &HoldingDialog::windDirection},
              {"Wind speed (kt)", "windSpeed", &HoldingDialog::windSpeed}},
             {{"entry", &HoldingDialog::EntryText},
              {"outbound", &HoldingDialog::OutboundText},
              {"teardrop", &HoldingDialog::TeardropText}},
             &HoldingDialog::leftTurns, "Left turns");
    return dialog.Run();
}

int RunDensityAltitude(QWidget* parent) {
    using W = CalculatorWidget<PressureDensityDialog>;
    W dialog(parent,
             {{"Elevation (ft)", "elevation", &PressureDensityDialog::elevation},
              {"QNH (hPa or in)", "qnh", &PressureDensityDialog::qnh},
              {"OAT (\u00B0C)", "temperature", &PressureDensityDialog::temperature}},
             {{"pressureAltitude", &PressureDensityDialog::PressureAltitudeText},
              {"densityAltitude", &PressureDensityDialog::DensityAltitudeText}});
    return dialog.Run();
}

int RunTrueAltitude(QWidget* parent) {
    using W = CalculatorWidget<TrueAltitudeDialog>;
    W dialog(
        parent,
        {{"Indicated (ft)", "indicated", &TrueAltitudeDialog::indicated},
         {"QNH (hPa or in)", "qnh", &TrueAltitudeDialog::qnh},
         {"OAT (\u00B0C)", "temperature", &TrueAltitudeDialog::temperature},
         {"Station elevation (ft)", "stationElevation", &TrueAltitudeDialog::stationElevation}},
        {{"trueAltitude", &TrueAltitudeDialog::TrueAltitudeText}});
    return dialog.Run();
}

// "Logbook totaliser": times typed as H:MM added to a list and its total.
class LogbookWidget : public ClosingModelFrame<LogbookDialog> {
  public:
    explicit LogbookWidget(QWidget* parent)
        : ClosingModelFrame<LogbookDialog>(parent, ToQString(LogbookDialog::kTitle)) {
        model_.Open();
        auto* row = new QHBoxLayout;
        entry_ = new QLineEdit(this);
        entry_->setObjectName("time");
        entry_->setPlaceholderText(QStringLiteral("H:MM"));
        row->addWidget(entry_, 1);
        auto* add = AddButton(row, this, QStringLiteral("Add"), "add");
        Body()->addLayout(row);
        list_ = new QListWidget(this);
        list_->setObjectName("entries");
        Body()->addWidget(list_, 1);
        auto* buttons = new QHBoxLayout;
        auto* remove = AddButton(buttons, this, QStringLiteral("Remove"), "remove");
        auto* clear = AddButton(buttons, this, QStringLiteral("Clear"), "clear");
        Body()->addLayout(buttons);
        total_ = new QLabel(this);
        total_->setObjectName("total");
        Body()->addWidget(total_);

        auto addEntry = [this] {
            if (model_.Add(ToUtf8(entry_->text())))
                entry_->clear();
            Show();
        };
        connect(add, &QPushButton::clicked, this, addEntry);
        connect(entry_, &QLineEdit::returnPressed, this, addEntry);
        connect(remove, &QPushButton::clicked, this, [this] {
            if (list_->currentRow() >= 0)
                model_.Remove(static_cast<std::size_t>(list_->currentRow()));
            Show();
        });
        connect(clear, &QPushButton::clicked, this, [this] {
            model_.Clear();
            Show();
        });
        Show();
    }

  private:
    void Show() {
        list_->clear();
        for (const auto& e : model_.Entries())
            list_->addItem(ToQString(e));
        total_->setText(QStringLiteral("Total ") + ToQString(model_.TotalText()));
    }

    QLineEdit* entry_;
    QListWidget* list_;
    QLabel* total_;
};

}  // namespace

void RegisterUtilityDialogs(QtDialogHost& host) {
    host.Register(Dialog::Timer, RunWidget<TimerWidget>);
    host.Register(Dialog::Conversions, RunWidget<ConversionsWidget>);
    host.Register(Dialog::SunTimes, RunWidget<SunWidget>);
    host.Register(Dialog::Crosswind, RunCrosswind);
    host.Register(Dialog::Holding, RunHolding);
    host.Register(Dialog::DensityAltitude, RunDensityAltitude);
    host.Register(Dialog::TrueAltitude, RunTrueAltitude);
    host.Register(Dialog::Logbook, RunWidget<LogbookWidget>);
}

}  // namespace aerix::qt
