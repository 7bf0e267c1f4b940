// Tools > Database over the management models in store/: a new empty database, the waypoint
// form (add and edit) and the searchable list with edit and delete.
#include "qt/database_dialog_widgets.hpp"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QListWidget>
#include <QScrollArea>
#include <functional>
#include <vector>

#include "app/app_state.hpp"
#include "platform/message_box.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/widget_support.hpp"
#include "store/nav_database_dialogs.hpp"
#include "store/schema.hpp"

namespace aerix::qt {

namespace {

constexpr const char* kSelectFirst = "Select a waypoint first";

// "New database": the name of the volume and database to create.
class NewDatabaseWidget : public DialogFrame {
  public:
    explicit NewDatabaseWidget(QWidget* parent)
        : DialogFrame(parent, QStringLiteral("New database")) {
        auto* form = new QFormLayout;
        name_ = AddEntry(form, QStringLiteral("Name"), "name");
        name_->setMaxLength(32);
        Body()->addLayout(form);
        auto* hint = new QLabel(
            QStringLiteral("The new database becomes the current one, ready for waypoints."), this);
        hint->setWordWrap(true);
        Body()->addWidget(hint);
        Body()->addStretch(1);
    }

  protected:
    bool OnOk() override {
        return NewNavDatabase(g_app.settings, g_app.nav, ToUtf8(name_->text()));
    }

  private:
    QLineEdit* name_;
};

// The waypoint form: every property, in a scrolling page; save decides whether it closes. On the
// 240-pixel screen a label beside its field leaves the field too narrow for a position, and the
// page would be wider than the view and cut at the right: each label goes above its field.
class WaypointFormWidget : public DialogFrame {
  public:
    using Save = std::function<bool(const WaypointForm&)>;

    WaypointFormWidget(QWidget* parent, const QString& title, WaypointForm form, Save save)
        : DialogFrame(parent, title), form_(std::move(form)), save_(std::move(save)) {
        auto* scroll = new QScrollArea(this);
        scroll->setWidgetResizable(true);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        auto* page = new QWidget(scroll);
        auto* layout = new QFormLayout(page);
        layout->setRowWrapPolicy(QFormLayout::WrapAllRows);
        layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
        layout->setContentsMargins(4, 4, 4, 4);
        layout->setVerticalSpacing(2);
        Bind(layout, "Name", "name", &WaypointForm::name);
        Bind(layout, "Ident", "ident", &WaypointForm::ident);
        Bind(layout, "Latitude", "latitude", &WaypointForm::latitude)
            ->setPlaceholderText(QStringLiteral("51.5 or N51 30.5"));
        Bind(layout, "Longitude", "longitude", &WaypointForm::longitude)
            ->setPlaceholderText(QStringLiteral("-0.25 or W000 15.0"));
        Bind(layout, "Elevation (ft)", "elevation", &WaypointForm::elevation);
        type_ = new QComboBox(page);
        type_->setObjectName("type");
        type_->addItem(QStringLiteral("-"));
        for (int code = 1; code <= kWaypointTypeCodes; ++code)
            type_->addItem(ToQString(WaypointTypeName(code)));
        type_->setCurrentIndex(form_.type >= 0 && form_.type <= kWaypointTypeCodes ? form_.type
                                                                                   : 0);
        layout->addRow(QStringLiteral("Type"), type_);
        Bind(layout, "Frequency", "frequency", &WaypointForm::frequency);
        Bind(layout, "Runway length (m)", "runwayLength", &WaypointForm::runwayLength);
        Bind(layout, "Runway", "runway", &WaypointForm::runway);
        Bind(layout, "Region", "region", &WaypointForm::region);
        Bind(layout, "Municipality", "municipality", &WaypointForm::municipality);
        Bind(layout, "Source", "source", &WaypointForm::source);
        for (std::size_t i = 0; i < form_.notes.size(); ++i) {
            auto* note = new QLineEdit(ToQString(form_.notes[i]), page);
            note->setObjectName(QStringLiteral("note%1").arg(i));
            layout->addRow(QStringLiteral("Note %1").arg(i + 1), note);
            entries_.push_back({note, &form_.notes[i]});
        }
        scroll->setWidget(page);
        Body()->addWidget(scroll, 1);
    }

  protected:
    bool OnOk() override {
        for (auto& [entry, field] : entries_)
            *field = ToUtf8(entry->text());
        form_.type = type_->currentIndex();
        return save_(form_);
    }

  private:
    QLineEdit* Bind(QFormLayout* layout, const char* label, const char* name,
                    std::string WaypointForm::*field) {
        auto* entry = AddEntry(layout, QString::fromUtf8(label), name, ToQString(form_.*field));
        entries_.push_back({entry, &(form_.*field)});
        return entry;
    }

    WaypointForm form_;
    Save save_;
    QComboBox* type_;
    std::vector<std::pair<QLineEdit*, std::string*>> entries_;
};

int RunAddWaypoint(QWidget* parent) {
    WaypointFormWidget dialog(
        parent, QStringLiteral("Add waypoint"), WaypointForm{},
        [](const WaypointForm& form) { return AddWaypoint(g_app.settings, g_app.nav, form); });
    return dialog.Run();
}

// "List view" (and Edit): the current database's waypoints found by name (or ICAO code), with
// Edit opening the form on the selected one and Delete asking first.
class WaypointListWidget : public DialogFrame {
  public:
    WaypointListWidget(QWidget* parent, const QString& title) : DialogFrame(parent, title) {
        Body()->addWidget(new QLabel(ToQString(g_app.settings.NavDatabaseName.utf8()), this));
        auto* row = new QHBoxLayout;
        search_ = new QLineEdit(this);
        search_->setObjectName("search");
        search_->setPlaceholderText(g_app.nav.NavSearchKey == schema::kWptIdent
                                        ? QStringLiteral("ICAO code")
                                        : QStringLiteral("Name"));
        auto* find = new QPushButton(QStringLiteral("Find"), this);
        find->setObjectName("find");
        row->addWidget(search_, 1);
        row->addWidget(find);
        Body()->addLayout(row);
        list_ = new QListWidget(this);
        list_->setObjectName("waypoints");
        Body()->addWidget(list_, 1);
        auto* buttons = new QHBoxLayout;
        auto* edit = new QPushButton(QStringLiteral("Edit"), this);
        edit->setObjectName("edit");
        auto* remove = new QPushButton(QStringLiteral("Delete"), this);
        remove->setObjectName("delete");
        buttons->addWidget(edit);
        buttons->addWidget(remove);
        Body()->addLayout(buttons);

        connect(find, &QPushButton::clicked, this, [this] { Fill(); });
        connect(search_, &QLineEdit::returnPressed, this, [this] { Fill(); });
        connect(list_, &QListWidget::itemDoubleClicked, this, [this] { Edit(); });
        connect(edit, &QPushButton::clicked, this, [this] { Edit(); });
        connect(remove, &QPushButton::clicked, this, [this] {
            const NavListLine* line = Selected();
            if (!line)
                platform::ShowError(kSelectFirst);
            else if (DeleteWaypointAt(g_app.settings, g_app.nav, line->index))
                Fill();
        });
        Fill();
    }

  private:
    void Fill() {
        lines_ = ListNavDatabase(g_app.settings, g_app.nav, ToUtf8(search_->text()));
        list_->clear();
        for (const auto& line : lines_)
            list_->addItem(ToQString(line.text));
    }

    const NavListLine* Selected() const {
        int row = list_->currentRow();
        return row >= 0 && row < static_cast<int>(lines_.size())
                   ? &lines_[static_cast<std::size_t>(row)]
                   : nullptr;
    }

    void Edit() {
        const NavListLine* line = Selected();
        WaypointForm form;
        if (!line) {
            platform::ShowError(kSelectFirst);
            return;
        }
        if (!ReadWaypointForEdit(g_app.settings, g_app.nav, line->oid, form))
            return;
        platform::CeOid oid = line->oid;
        WaypointFormWidget dialog(this, QStringLiteral("Edit waypoint"), std::move(form),
                                  [oid](const WaypointForm& f) {
                                      return EditWaypoint(g_app.settings, g_app.nav, oid, f);
                                  });
        if (dialog.Run() == kDialogOk)
            Fill();
    }

    QLineEdit* search_;
    QListWidget* list_;
    std::vector<NavListLine> lines_;
};

}  // namespace

void RegisterDatabaseDialogs(QtDialogHost& host) {
    host.Register(Dialog::DatabaseNew, RunWidget<NewDatabaseWidget>);
    host.Register(Dialog::DatabaseAdd, RunAddWaypoint);
    host.Register(Dialog::DatabaseEdit, [](QWidget* parent) {
        WaypointListWidget dialog(parent, QStringLiteral("Edit waypoint"));
        return dialog.Run();
    });
    host.Register(Dialog::DatabaseList, [](QWidget* parent) {
        WaypointListWidget dialog(parent, QStringLiteral("List view"));
        return dialog.Run();
    });
}

}  // namespace aerix::qt
