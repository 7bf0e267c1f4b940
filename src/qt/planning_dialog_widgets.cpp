// The sector dialogs ("New sector", "Insert a sector", "Edit a Sector") and the "Wind Table" with
// its "Add/Edit Wind data" dialog, each a thin layer over its model in planning/.
#include "qt/planning_dialog_widgets.hpp"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QRadioButton>
#include <optional>
#include <vector>

#include "app/app_state.hpp"
#include "planning/sector_dialog.hpp"
#include "planning/waypoint_search.hpp"
#include "planning/wind_table_dialog.hpp"
#include "platform/message_box.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/widget_support.hpp"

namespace aerix::qt {

namespace {

QString EndText(const std::optional<SectorEnd>& end) {
    if (!end)
        return QStringLiteral("-");
    QString text = ToQString(end->name);
    if (!end->ident.empty() && end->ident != end->name)
        text += QStringLiteral(" (") + ToQString(end->ident) + QStringLiteral(")");
    return text;
}

// The sector dialog: find the ends by name (or ICAO code) in the navigation database, or type a
// position; then altitude, phase, still air and variation. The "New sector" form also offers
// "Direct to" the found waypoint and "Resume plan".
class SectorWidget : public DialogFrame {
  public:
    SectorWidget(QWidget* parent, const QString& title, SectorDialog model)
        : DialogFrame(parent, title), model_(std::move(model)) {
        // The two ends; the checked one is what a found waypoint or typed position fills.
        fromButton_ = new QRadioButton(this);
        fromButton_->setObjectName("chooseFrom");
        toButton_ = new QRadioButton(this);
        toButton_->setObjectName("chooseTo");
        toButton_->setChecked(true);
        fromButton_->setEnabled(model_.StartEditable());
        Body()->setSpacing(3);
        Body()->addWidget(fromButton_);
        Body()->addWidget(toButton_);

        auto* searchRow = new QHBoxLayout;
        search_ = new QLineEdit(this);
        search_->setObjectName("search");
        search_->setPlaceholderText(g_app.settings.IcaoSearch ? QStringLiteral("ICAO code")
                                                              : QStringLiteral("Waypoint name"));
        auto* find = new QPushButton(QStringLiteral("Find"), this);
        find->setObjectName("find");
        searchRow->addWidget(search_, 1);
        searchRow->addWidget(find);
        Body()->addLayout(searchRow);
        found_ = new QListWidget(this);
        found_->setObjectName("waypoints");
        found_->setMinimumHeight(40);
        Body()->addWidget(found_, 1);

        auto* positionRow = new QHBoxLayout;
        position_ = new QLineEdit(this);
        position_->setObjectName("position");
        position_->setPlaceholderText(QStringLiteral("LAT,LON (51.47,-0.45)"));
        auto* usePosition = new QPushButton(QStringLiteral("Use"), this);
        usePosition->setObjectName("usePosition");
        positionRow->addWidget(position_, 1);
        positionRow->addWidget(usePosition);
        Body()->addLayout(positionRow);

        auto* figures = new QHBoxLayout;
        figures->addWidget(new QLabel(QStringLiteral("Alt (ft)"), this));
        altitude_ = new QLineEdit(ToQString(model_.AltitudeText()), this);
        altitude_->setObjectName("altitude");
        figures->addWidget(altitude_);
        figures->addWidget(new QLabel(QStringLiteral("Var (\u00B0 W+)"), this));
        variation_ = new QLineEdit(this);
        variation_->setObjectName("variation");
        figures->addWidget(variation_);
        Body()->addLayout(figures);

        auto* flight = new QHBoxLayout;
        phase_ = new QComboBox(this);
        phase_->setObjectName("phase");
        phase_->addItems(
            {QStringLiteral("Climb"), QStringLiteral("Cruise"), QStringLiteral("Descent")});
        phase_->setCurrentIndex(model_.Phase() - 1);
        flight->addWidget(phase_, 1);
        stillAir_ = new QCheckBox(QStringLiteral("Still air"), this);
        stillAir_->setObjectName("stillAir");
        stillAir_->setChecked(model_.StillAir());
        flight->addWidget(stillAir_);
        Body()->addLayout(flight);

        if (model_.GetMode() == SectorDialog::Mode::kNew) {
            auto* row = new QHBoxLayout;
            auto* direct = new QPushButton(QStringLiteral("Direct to"), this);
            direct->setObjectName("directTo");
            auto* resume = new QPushButton(QStringLiteral("Resume plan"), this);
            resume->setObjectName("resumePlan");
            row->addWidget(direct);
            row->addWidget(resume);
            Body()->addLayout(row);
            connect(direct, &QPushButton::clicked, this, [this] { OnDirectTo(); });
            connect(resume, &QPushButton::clicked, this, [this] {
                ResumePlan(g_app.leg);
                done(kDialogCancel);
            });
        }

        connect(find, &QPushButton::clicked, this, [this] { OnFind(); });
        connect(search_, &QLineEdit::returnPressed, this, [this] { OnFind(); });
        connect(found_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
            auto row = static_cast<std::size_t>(found_->row(item));
            if (row < results_.size())
                Choose(SectorEndOf(results_[row]));
        });
        connect(usePosition, &QPushButton::clicked, this, [this] {
            auto end = SectorEndAt(ToUtf8(position_->text()));
            if (!end) {
                platform::ShowError("Enter the position as LAT,LON in decimal degrees");
                return;
            }
            Choose(*end);
        });
        connect(altitude_, &QLineEdit::textEdited, this,
                [this](const QString& text) { model_.SetAltitude(ToUtf8(text)); });
        connect(phase_, &QComboBox::currentIndexChanged, this,
                [this](int index) { model_.SetPhase(index + 1); });
        connect(stillAir_, &QCheckBox::toggled, this, [this](bool on) { model_.SetStillAir(on); });
        connect(variation_, &QLineEdit::textEdited, this,
                [this](const QString& text) { model_.SetVariation(ToUtf8(text)); });
        ShowEnds();
    }

  protected:
    bool OnOk() override { return model_.Ok() == 1; }

  private:
    void OnFind() {
        found_->clear();
        results_ = SearchWaypoints(g_app.settings, g_app.nav, search_->text().toStdU16String());
        for (const auto& w : results_)
            found_->addItem(ToQString(w.Name) + QStringLiteral("  ") + ToQString(w.Ident));
    }

    void Choose(const SectorEnd& end) {
        if (fromButton_->isChecked() && model_.StartEditable()) {
            model_.SetStart(end);
            toButton_->setChecked(true);  // the start is chosen: next comes the end
        } else {
            model_.SetEnd(end);
        }
        ShowEnds();
    }

    void ShowEnds() {
        fromButton_->setText(QStringLiteral("From: ") + EndText(model_.Start()));
        toButton_->setText(QStringLiteral("To: ") + EndText(model_.End()));
        variation_->setText(ToQString(model_.VariationText()));
    }

    void OnDirectTo() {
        if (!model_.End()) {
            platform::ShowError("Choose the waypoint to fly direct to");
            return;
        }
        if (DirectTo(g_app.leg, g_app.gps.Fix, *model_.End()))
            done(kDialogCancel);
    }

    SectorDialog model_;
    std::vector<WaypointRecord> results_;
    QRadioButton* fromButton_;
    QRadioButton* toButton_;
    QLineEdit* search_;
    QListWidget* found_;
    QLineEdit* position_;
    QLineEdit* altitude_;
    QComboBox* phase_;
    QCheckBox* stillAir_;
    QLineEdit* variation_;
};

int RunNewSector(QWidget* parent) {
    SectorWidget dialog(parent, QStringLiteral("New sector"),
                        SectorDialog::ForNew(g_app.settings, g_app.plan, g_app.nav));
    return dialog.Run();
}

int RunInsertSector(QWidget* parent) {
    SectorWidget dialog(parent, QStringLiteral("Insert a sector"),
                        SectorDialog::ForInsert(g_app.settings, g_app.plan, g_app.nav,
                                                g_app.plan.HighlightedSector));
    return dialog.Run();
}

int RunEditSector(QWidget* parent) {
    auto model =
        SectorDialog::ForEdit(g_app.settings, g_app.plan, g_app.nav, g_app.plan.HighlightedSector);
    if (!model) {
        platform::ShowError("No sector to edit - add one with New sector");
        return kDialogCancel;
    }
    SectorWidget dialog(parent, QStringLiteral("Edit a Sector"), std::move(*model));
    return dialog.Run();
}

// "Add/Edit Wind data": the four figures of one row.
class WindEditWidget : public DialogFrame {
  public:
    WindEditWidget(QWidget* parent, WindTableDialog& table, WindEditDialog& model)
        : DialogFrame(parent, ToQString(WindEditDialog::kTitle)), table_(table), model_(model) {
        auto* form = new QFormLayout;
        static constexpr const char* kNames[] = {"altitude", "direction", "speed", "temperature"};
        const QString labels[] = {
            QStringLiteral("Altitude (ft)"), QStringLiteral("Direction (\u00B0T)"),
            QStringLiteral("Speed (kt)"), QStringLiteral("Temperature (\u00B0C)")};
        for (int f = 0; f < WindEditDialog::kFieldCount; ++f) {
            auto field = static_cast<WindEditDialog::Field>(f);
            auto* entry = AddEntry(form, labels[f], kNames[f], ToQString(model_.Text(field)));
            connect(entry, &QLineEdit::textEdited, this,
                    [this, field](const QString& text) { model_.SetText(field, ToUtf8(text)); });
        }
        Body()->addLayout(form);
        Body()->addStretch(1);
    }

  protected:
    // A figure the row cannot hold is reported and the dialog stays open.
    bool OnOk() override { return table_.Finish(model_, kDialogOk); }
    void OnClose() override { table_.Finish(model_, kDialogCancel); }

  private:
    WindTableDialog& table_;
    WindEditDialog& model_;
};

// "Wind Table": the rows in altitude order with Add, Edit and Delete.
class WindTableWidget : public DialogFrame {
  public:
    explicit WindTableWidget(QWidget* parent)
        : DialogFrame(parent, ToQString(WindTableDialog::kTitle)) {
        model_.Open();
        // The lines are fixed-width columns: the heading uses the same font and spacing.
        QFont fixed(QStringLiteral("Monospace"));
        fixed.setStyleHint(QFont::TypeWriter);
        // 37 characters a line must fit the 240-pixel screen.
        fixed.setPixelSize(9);
        auto* heading = new QLabel(QStringLiteral("Alt (ft)      Dir°T      Kt        °C"), this);
        heading->setFont(fixed);
        heading->setIndent(3);
        Body()->addWidget(heading);
        list_ = new QListWidget(this);
        list_->setObjectName("winds");
        list_->setFont(fixed);
        list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        list_->setTextElideMode(Qt::ElideNone);
        Body()->addWidget(list_, 1);
        auto* row = new QHBoxLayout;
        for (auto [text, name] :
             {std::pair{"Add", "add"}, std::pair{"Edit", "edit"}, std::pair{"Delete", "delete"}}) {
            auto* button = new QPushButton(QString::fromLatin1(text), this);
            button->setObjectName(name);
            button->setMinimumWidth(40);  // three to a row on the narrow screen
            row->addWidget(button);
            buttons_.push_back(button);
        }
        Body()->addLayout(row);
        connect(list_, &QListWidget::currentRowChanged, this,
                [this](int index) { model_.Select(index); });
        connect(buttons_[0], &QPushButton::clicked, this, [this] {
            WindEditDialog edit = model_.BeginAdd();
            RunEdit(edit);
        });
        connect(buttons_[1], &QPushButton::clicked, this, [this] {
            auto edit = model_.BeginEdit();
            if (edit)
                RunEdit(*edit);
        });
        connect(buttons_[2], &QPushButton::clicked, this, [this] {
            model_.Delete();
            Fill();
        });
        Fill();
    }

  protected:
    bool OnOk() override { return model_.Close(kDialogOk) == kDialogOk; }
    // The X, Escape and closing the window all come here.
    void OnClose() override { model_.Close(kDialogCancel); }

  private:
    void RunEdit(WindEditDialog& edit) {
        WindEditWidget dialog(this, model_, edit);
        dialog.Run();
        Fill();
    }

    void Fill() { model_.Select(RefillList(list_, model_.Lines(), model_.Selected())); }

    WindTableDialog model_{g_app.settings, g_app.plan};
    QListWidget* list_;
    std::vector<QPushButton*> buttons_;
};

}  // namespace

void RegisterPlanningDialogs(QtDialogHost& host) {
    host.Register(Dialog::NewSector, RunNewSector);
    host.Register(Dialog::InsertSector, RunInsertSector);
    host.Register(Dialog::EditSector, RunEditSector);
    host.Register(Dialog::WindTable, RunWidget<WindTableWidget>);
}

}  // namespace aerix::qt
