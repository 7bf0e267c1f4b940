// The File menu's plan dialogs on Qt: "New plan", "Open plan" and "Delete plan". Each is a thin
// layer over its model in planning/: the widgets show what the model holds and pass the taps on.
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

#include "app/app_state.hpp"
#include "planning/plan_dialogs.hpp"
#include "platform/text.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/plan_dialog_widgets.hpp"

namespace aerix::qt {

namespace {

QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

class NewPlanWidget : public DialogFrame {
  public:
    explicit NewPlanWidget(QWidget* parent)
        : DialogFrame(parent, ToQString(NewPlanDialog::kCaption)) {
        Body()->addWidget(new QLabel(QStringLiteral("Plan name"), this));
        name_ = new QLineEdit(this);
        name_->setObjectName("name");
        name_->setMaxLength(static_cast<int>(NewPlanDialog::kMaxName));
        Body()->addWidget(name_);
        Body()->addStretch(1);
        name_->setFocus();
    }

  protected:
    bool OnOk() override {
        model_.SetName(name_->text().toStdU16String());
        model_.Ok();
        return true;
    }

  private:
    NewPlanDialog model_{g_app.settings, g_app.plan};
    QLineEdit* name_;
};

// Open and Delete: a list of the plans; a tap acts at once and ends the dialog.
template <typename Model>
class PlanListWidget : public DialogFrame {
  public:
    PlanListWidget(QWidget* parent, Model model)
        : DialogFrame(parent, ToQString(Model::kTitle)), model_(std::move(model)) {
        model_.Open();
        list_ = new QListWidget(this);
        list_->setObjectName("plans");
        for (const auto& name : model_.Entries())
            list_->addItem(QString::fromStdU16String(name));
        Body()->addWidget(list_);
        connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
            int result = model_.Choose(list_->row(item));
            if (result != 0)
                done(result);
        });
    }

  protected:
    bool OnOk() override {
        model_.End(1);
        return true;
    }
    void OnClose() override { model_.End(2); }

  private:
    Model model_;
    QListWidget* list_;
};

template <typename D>
int RunFrame(QWidget* parent) {
    D dialog(parent);
    return dialog.Run();
}

}  // namespace

void RegisterPlanDialogs(QtDialogHost& host) {
    host.Register(Dialog::NewPlan, RunFrame<NewPlanWidget>);
    host.Register(Dialog::OpenPlan, [](QWidget* parent) {
        PlanListWidget<OpenPlanDialog> dialog(parent, OpenPlanDialog(g_app.settings, g_app.plan));
        return dialog.Run();
    });
    host.Register(Dialog::DeletePlan, [](QWidget* parent) {
        PlanListWidget<DeletePlanDialog> dialog(parent, DeletePlanDialog(g_app.settings));
        return dialog.Run();
    });
}

}  // namespace aerix::qt
