// "Setup A/c": the aircraft list with Add, Edit, Delete and Use, and the aircraft form in three
// tabs (figures with their units, loading stations, envelope points) over the models in aircraft/.
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QListWidget>
#include <QScrollArea>
#include <QTabWidget>
#include <QTableWidget>
#include <vector>

#include "aircraft/aircraft_setup_dialog.hpp"
#include "aircraft/weight_balance.hpp"
#include "app/app_state.hpp"
#include "qt/aircraft_dialog_widgets.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/widget_support.hpp"

namespace aerix::qt {

namespace {

QPushButton* AddButton(QWidget* owner, QHBoxLayout* row, const char* text, const char* name) {
    auto* button = new QPushButton(QString::fromLatin1(text), owner);
    button->setObjectName(name);
    button->setMinimumWidth(40);
    row->addWidget(button);
    return button;
}

QComboBox* UnitChoice(QWidget* owner, const char* name, int first, int last,
                      std::string (*unitName)(int), int current) {
    auto* combo = new QComboBox(owner);
    combo->setObjectName(name);
    for (int code = first; code <= last; ++code)
        combo->addItem(ToQString(unitName(code)), code);
    combo->setCurrentIndex(std::max(0, combo->findData(current)));
    return combo;
}

const char* const kKindNames[] = {"", "basic", "fuel", "seats", "baggage"};

class AircraftEditWidget : public DialogFrame {
  public:
    AircraftEditWidget(QWidget* parent, AircraftSetupDialog& list, AircraftEditDialog& model)
        : DialogFrame(parent, ToQString(AircraftEditDialog::kTitle)), list_(list), model_(model) {
        Body()->setContentsMargins(2, 2, 2, 2);
        auto* tabs = new QTabWidget(this);
        tabs->setObjectName("tabs");
        tabs->addTab(FiguresPage(), QStringLiteral("Aircraft"));
        tabs->addTab(StationsPage(), QStringLiteral("Stations"));
        tabs->addTab(EnvelopePage(), QStringLiteral("Envelope"));
        Body()->addWidget(tabs, 1);
        FillStations();
        FillPoints();
    }

  protected:
    // A fault is reported and the form stays open with what was typed.
    bool OnOk() override { return list_.Finish(model_, kDialogOk); }
    void OnClose() override { list_.Finish(model_, kDialogCancel); }

  private:
    QWidget* FiguresPage() {
        auto* scroll = new QScrollArea;
        scroll->setWidgetResizable(true);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        auto* page = new QWidget;
        form_ = new QFormLayout(page);
        // Label above field: the labels carry their units and need the width.
        form_->setRowWrapPolicy(QFormLayout::WrapAllRows);
        form_->setVerticalSpacing(1);
        static const char* kNames[] = {
            "registration",  "type",        "climbRate",   "climbTas",    "climbFuelFlow",
            "cruiseTas",     "cruiseFuel",  "descentRate", "descentTas",  "descentFuelFlow",
            "taxiFuel",      "emptyWeight", "emptyArm",    "maxTakeoff",  "maxRamp",
            "maxLanding",    "maxZeroFuel", "graphArmMin", "graphArmMax", "graphWeightMin",
            "graphWeightMax"};
        auto* units = new QHBoxLayout;
        weight_ = UnitChoice(page, "weightUnits", 1, 2, WeightUnitName, model_.WeightUnits());
        fuel_ = UnitChoice(page, "fuelUnits", 1, 5, FuelUnitName, model_.FuelUnits());
        arm_ = UnitChoice(page, "armUnits", 1, 4, ArmUnitName, model_.ArmUnits());
        units->addWidget(weight_);
        units->addWidget(fuel_);
        units->addWidget(arm_);
        for (int f = 0; f < AircraftEditDialog::kFieldCount; ++f) {
            auto field = static_cast<AircraftEditDialog::Field>(f);
            if (field == AircraftEditDialog::kClimbRate)
                form_->addRow(QStringLiteral("Units: weight, fuel, arm"), units);
            auto* entry = AddEntry(form_, ToQString(model_.Label(field)), kNames[f],
                                   ToQString(model_.Text(field)));
            entries_.push_back(entry);
            connect(entry, &QLineEdit::textEdited, this, [this, field](const QString& text) {
                model_.SetText(field, ToUtf8(text));
                if (field == AircraftEditDialog::kEmptyArm)
                    FillStations();
            });
        }
        auto relabel = [this] {
            model_.SetWeightUnits(static_cast<std::int16_t>(weight_->currentData().toInt()));
            model_.SetFuelUnits(static_cast<std::int16_t>(fuel_->currentData().toInt()));
            model_.SetArmUnits(static_cast<std::int16_t>(arm_->currentData().toInt()));
            for (int f = 0; f < AircraftEditDialog::kFieldCount; ++f)
                if (auto* label = qobject_cast<QLabel*>(form_->labelForField(entries_[f])))
                    label->setText(
                        ToQString(model_.Label(static_cast<AircraftEditDialog::Field>(f))));
            FillStations();
            FillPoints();
        };
        for (QComboBox* combo : {weight_, fuel_, arm_})
            connect(combo, &QComboBox::currentIndexChanged, this, relabel);
        scroll->setWidget(page);
        return scroll;
    }

    QWidget* StationsPage() {
        auto* page = new QWidget;
        auto* box = new QVBoxLayout(page);
        box->setContentsMargins(0, 2, 0, 0);
        stations_ = new QTableWidget(0, 3, page);
        stations_->setObjectName("stations");
        stations_->verticalHeader()->hide();
        stations_->horizontalHeader()->setStretchLastSection(true);
        // Three columns across the 240-pixel screen without scrolling sideways.
        stations_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        stations_->setColumnWidth(0, 62);
        stations_->setColumnWidth(1, 88);
        box->addWidget(stations_, 1);
        auto* row = new QHBoxLayout;
        connect(AddButton(page, row, "Add", "addStation"), &QPushButton::clicked, this, [this] {
            model_.AddStation();
            FillStations();
            stations_->setCurrentCell(stations_->rowCount() - 1, 0);
        });
        connect(AddButton(page, row, "Remove", "removeStation"), &QPushButton::clicked, this,
                [this] {
                    int r = stations_->currentRow();
                    if (r >= 0 && model_.RemoveStation(static_cast<std::size_t>(r)))
                        FillStations();
                });
        box->addLayout(row);
        connect(stations_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
            if (filling_)
                return;
            auto r = static_cast<std::size_t>(item->row());
            if (item->column() == 0)
                model_.SetStationName(r, ToUtf8(item->text()));
            else if (item->column() == 2)
                model_.SetStationArm(r, ToUtf8(item->text()));
        });
        return page;
    }

    QWidget* EnvelopePage() {
        auto* page = new QWidget;
        auto* box = new QVBoxLayout(page);
        box->setContentsMargins(0, 2, 0, 0);
        auto* hint =
            new QLabel(QStringLiteral("Corners in order; the outline is closed on save"), page);
        hint->setWordWrap(true);
        box->addWidget(hint);
        points_ = new QTableWidget(0, 2, page);
        points_->setObjectName("points");
        points_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
        box->addWidget(points_, 1);
        auto* row = new QHBoxLayout;
        connect(AddButton(page, row, "Insert", "addPoint"), &QPushButton::clicked, this, [this] {
            int r = points_->currentRow();
            model_.InsertPoint(r < 0 ? model_.Points().size() : static_cast<std::size_t>(r));
            FillPoints();
            points_->setCurrentCell(r < 0 ? points_->rowCount() - 1 : r + 1, 0);
        });
        connect(AddButton(page, row, "Remove", "removePoint"), &QPushButton::clicked, this, [this] {
            int r = points_->currentRow();
            if (r >= 0) {
                model_.RemovePoint(static_cast<std::size_t>(r));
                FillPoints();
            }
        });
        box->addLayout(row);
        connect(points_, &QTableWidget::itemChanged, this, [this](QTableWidgetItem* item) {
            if (filling_)
                return;
            auto r = static_cast<std::size_t>(item->row());
            if (item->column() == 0)
                model_.SetPointArm(r, ToUtf8(item->text()));
            else
                model_.SetPointWeight(r, ToUtf8(item->text()));
        });
        return page;
    }

    void FillStations() {
        filling_ = true;
        stations_->setHorizontalHeaderLabels(
            {QStringLiteral("Name"), QStringLiteral("Kind"),
             QStringLiteral("Arm (") + ToQString(ArmUnitName(model_.ArmUnits())) + ")"});
        const auto& rows = model_.Stations();
        stations_->setRowCount(static_cast<int>(rows.size()));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            int r = static_cast<int>(i);
            bool basic = rows[i].Kind == 1;
            stations_->setItem(r, 0, new QTableWidgetItem(ToQString(rows[i].Name)));
            auto* arm = new QTableWidgetItem(ToQString(model_.StationArmText(i)));
            if (basic) {
                // The basic row's arm is the empty-weight arm of the Aircraft tab.
                arm->setFlags(arm->flags() & ~Qt::ItemIsEditable);
                arm->setForeground(Qt::darkGray);
                stations_->removeCellWidget(r, 1);
                auto* kind = new QTableWidgetItem(QStringLiteral("basic"));
                kind->setFlags(kind->flags() & ~Qt::ItemIsEditable);
                stations_->setItem(r, 1, kind);
            } else {
                auto* kind = new QComboBox;
                for (int k = 2; k <= 4; ++k)
                    kind->addItem(QString::fromLatin1(kKindNames[k]), k);
                kind->setCurrentIndex(rows[i].Kind - 2);
                connect(kind, &QComboBox::currentIndexChanged, this, [this, i, kind] {
                    model_.SetStationKind(i,
                                          static_cast<std::int16_t>(kind->currentData().toInt()));
                });
                stations_->setCellWidget(r, 1, kind);
            }
            stations_->setItem(r, 2, arm);
        }
        filling_ = false;
    }

    void FillPoints() {
        filling_ = true;
        points_->setHorizontalHeaderLabels(
            {QStringLiteral("Arm (") + ToQString(ArmUnitName(model_.ArmUnits())) + ")",
             QStringLiteral("Weight (") + ToQString(WeightUnitName(model_.WeightUnits())) + ")"});
        const auto& rows = model_.Points();
        points_->setRowCount(static_cast<int>(rows.size()));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            points_->setItem(static_cast<int>(i), 0, new QTableWidgetItem(ToQString(rows[i].Arm)));
            points_->setItem(static_cast<int>(i), 1,
                             new QTableWidgetItem(ToQString(rows[i].Weight)));
        }
        filling_ = false;
    }

    AircraftSetupDialog& list_;
    AircraftEditDialog& model_;
    QFormLayout* form_ = nullptr;
    std::vector<QLineEdit*> entries_;
    QComboBox *weight_ = nullptr, *fuel_ = nullptr, *arm_ = nullptr;
    QTableWidget* stations_ = nullptr;
    QTableWidget* points_ = nullptr;
    bool filling_ = false;
};

class AircraftSetupWidget : public DialogFrame {
  public:
    explicit AircraftSetupWidget(QWidget* parent)
        : DialogFrame(parent, ToQString(AircraftSetupDialog::kTitle)) {
        model_.Open();
        list_ = new QListWidget(this);
        list_->setObjectName("aircraft");
        Body()->addWidget(list_, 1);
        auto* hint = new QLabel(QStringLiteral("* the active aircraft"), this);
        Body()->addWidget(hint);
        auto* row = new QHBoxLayout;
        connect(AddButton(this, row, "Add", "add"), &QPushButton::clicked, this, [this] {
            AircraftEditDialog edit = model_.BeginAdd();
            RunEdit(edit);
        });
        connect(AddButton(this, row, "Edit", "edit"), &QPushButton::clicked, this, [this] {
            auto edit = model_.BeginEdit();
            if (edit)
                RunEdit(*edit);
        });
        connect(AddButton(this, row, "Del", "delete"), &QPushButton::clicked, this, [this] {
            model_.Delete();
            Fill();
        });
        connect(AddButton(this, row, "Use", "use"), &QPushButton::clicked, this, [this] {
            model_.Choose();
            Fill();
        });
        Body()->addLayout(row);
        connect(list_, &QListWidget::currentRowChanged, this,
                [this](int index) { model_.Select(index); });
        connect(list_, &QListWidget::itemDoubleClicked, this, [this] {
            auto edit = model_.BeginEdit();
            if (edit)
                RunEdit(*edit);
        });
        Fill();
    }

  protected:
    bool OnOk() override {
        model_.Close(kDialogOk);
        return true;
    }
    void OnClose() override { model_.Close(kDialogCancel); }

  private:
    void RunEdit(AircraftEditDialog& edit) {
        AircraftEditWidget dialog(this, model_, edit);
        dialog.Run();
        Fill();
    }

    void Fill() { model_.Select(RefillList(list_, model_.Lines(), model_.Selected())); }

    AircraftSetupDialog model_{g_app.settings, g_app.aircraft, g_app.plan};
    QListWidget* list_;
};

}  // namespace

void RegisterAircraftSetupDialogs(QtDialogHost& host) {
    host.Register(Dialog::AircraftSetup, RunWidget<AircraftSetupWidget>);
}

}  // namespace aerix::qt
