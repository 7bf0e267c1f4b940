// The chart dialogs over their models in views/: pick a bitmap to calibrate, enter the position
// of the point under the cross, and keep the list of calibrated charts.
#include "qt/map_dialog_widgets.hpp"

#include <QFontMetrics>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QListWidget>

#include "app/app_state.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/widget_support.hpp"
#include "views/map_management.hpp"

namespace aerix::qt {

namespace {

void Fill(QListWidget* list, const std::vector<std::u16string>& items) {
    list->blockSignals(true);
    list->clear();
    for (const auto& item : items)
        list->addItem(ToQString(item));
    list->blockSignals(false);
}

// "Load bitmap (to calibrate)": a tap on a storage place or a bitmap acts at once; ok does
// nothing, X cancels.
class LoadBitmapWidget : public DialogFrame {
  public:
    explicit LoadBitmapWidget(QWidget* parent)
        : DialogFrame(parent, QStringLiteral("Load bitmap (to calibrate)")) {
        model_.Open();
        Body()->addWidget(new QLabel(QStringLiteral("Storage"), this));
        storage_ = new QListWidget(this);
        storage_->setObjectName("storage");
        storage_->setMaximumHeight(70);
        Body()->addWidget(storage_);
        Body()->addWidget(new QLabel(QStringLiteral("Bitmaps"), this));
        bitmaps_ = new QListWidget(this);
        bitmaps_->setObjectName("bitmaps");
        Body()->addWidget(bitmaps_, 1);
        Fill(storage_, model_.Storage());
        Fill(bitmaps_, model_.Bitmaps());
        storage_->blockSignals(true);
        storage_->setCurrentRow(0);
        storage_->blockSignals(false);
        connect(storage_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
            model_.SelectStorage(storage_->row(item));
            Fill(bitmaps_, model_.Bitmaps());
        });
        connect(bitmaps_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
            int result = model_.SelectBitmap(bitmaps_->row(item));
            if (result != 0)
                done(result);
        });
    }

  protected:
    bool OnOk() override { return false; }

  private:
    LoadBitmapDialog model_{g_app.view};
    QListWidget* storage_;
    QListWidget* bitmaps_;
};

// "Calibrate": degrees and minutes of the point under the cross, with the hemisphere buttons.
class CalibrateWidget : public DialogFrame {
  public:
    explicit CalibrateWidget(QWidget* parent) : DialogFrame(parent, QStringLiteral("Calibrate")) {
        auto* form = new QFormLayout;
        AddRow(form, QStringLiteral("Latitude"), "latDeg", "latMin", "latHemisphere",
               &CalibrateDialog::latDegrees, &CalibrateDialog::latMinutes,
               &CalibrateDialog::latHemisphere, &CalibrateDialog::ToggleLatHemisphere);
        AddRow(form, QStringLiteral("Longitude"), "lonDeg", "lonMin", "lonHemisphere",
               &CalibrateDialog::lonDegrees, &CalibrateDialog::lonMinutes,
               &CalibrateDialog::lonHemisphere, &CalibrateDialog::ToggleLonHemisphere);
        // The hint sits under the boxes it describes.
        form->addRow(QString(), new QLabel(QStringLiteral("dd mm.m"), this));
        Body()->addLayout(form);
        Body()->addStretch(1);
    }

  protected:
    bool OnOk() override { return model_.Ok() != 0; }
    void OnClose() override { model_.Cancel(); }

  private:
    using Text = std::u16string CalibrateDialog::*;
    void AddRow(QFormLayout* form, const QString& label, const char* degreesName,
                const char* minutesName, const char* buttonName, Text degrees, Text minutes,
                Text hemisphere, void (CalibrateDialog::*toggle)()) {
        // On the 240-pixel screen: degrees take "180", the minutes the rest ("59.999" and more),
        // the hemisphere button one letter.
        const QFontMetrics metrics(font());
        auto* row = new QHBoxLayout;
        for (auto [name, field] :
             {std::pair{degreesName, degrees}, std::pair{minutesName, minutes}}) {
            auto* entry = new QLineEdit(this);
            entry->setObjectName(name);
            entry->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
            if (field == degrees)
                entry->setFixedWidth(metrics.horizontalAdvance(QStringLiteral("-1800")) + 10);
            else
                entry->setMinimumWidth(metrics.horizontalAdvance(QStringLiteral("59.999")) + 10);
            row->addWidget(entry, field == degrees ? 0 : 1);
            connect(entry, &QLineEdit::textEdited, this,
                    [this, field](const QString& text) { model_.*field = text.toStdU16String(); });
        }
        auto* button = new QPushButton(ToQString(model_.*hemisphere), this);
        button->setObjectName(buttonName);
        button->setFixedWidth(metrics.horizontalAdvance(QStringLiteral("W")) * 3 + 8);
        row->addWidget(button);
        connect(button, &QPushButton::clicked, this, [this, button, hemisphere, toggle] {
            (model_.*toggle)();
            button->setText(ToQString(model_.*hemisphere));
        });
        form->addRow(label, row);
    }

    CalibrateDialog model_{g_app.view};
};

// "Calibrated maps": the charts by file name; Remove asks first.
class CalibratedMapsWidget : public ClosingModelFrame<CalibratedMapsDialog> {
  public:
    explicit CalibratedMapsWidget(QWidget* parent)
        : ClosingModelFrame<CalibratedMapsDialog>(parent, QStringLiteral("Calibrated maps")) {
        model_.Open();
        list_ = new QListWidget(this);
        list_->setObjectName("maps");
        Body()->addWidget(list_, 1);
        auto* remove = new QPushButton(QStringLiteral("Remove from list"), this);
        remove->setObjectName("remove");
        Body()->addWidget(remove);
        Fill(list_, model_.Names());
        connect(remove, &QPushButton::clicked, this, [this] {
            int row = list_->currentRow();
            model_.Remove(row);
            // A refused removal keeps the chart selected.
            Fill(list_, model_.Names());
            if (row < list_->count())
                list_->setCurrentRow(row);
        });
    }

  private:
    QListWidget* list_;
};

}  // namespace

void RegisterMapDialogs(QtDialogHost& host) {
    host.Register(Dialog::MapLoad, RunWidget<LoadBitmapWidget>);
    host.Register(Dialog::Calibrate, RunWidget<CalibrateWidget>);
    host.Register(Dialog::MapEdit, RunWidget<CalibratedMapsWidget>);
}

}  // namespace aerix::qt
