// What the pilot reads in the crowded dialogs on the 240 x 320 screen, in the program's font:
// every field labelled with its unit, nothing cut at the right or overlapping, and a number that
// is not one refused rather than read in part.
#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QTest>

#include "dialog_driver.hpp"
#include "qt/widget_support.hpp"
#include "utilities/conversions_dialog.hpp"

namespace aerix::qt {
namespace {

class DialogLayoutTest : public DialogTest {
  protected:
    void SetUp() override {
        DialogTest::SetUp();
        saved_ = QApplication::font();
        QFont font(QStringLiteral("DejaVu Sans"));  // as the program sets it
        font.setPixelSize(11);
        QApplication::setFont(font);
    }
    void TearDown() override { QApplication::setFont(saved_); }

    int Run(Dialog dialog, User user) {
        WhenShown(std::move(user));
        return host_.Run(dialog);
    }

    QFont saved_;
};

// The widget's span across, in the dialog's coordinates.
QRect InDialog(QWidget* widget, QWidget* dialog) {
    return QRect(widget->mapTo(dialog, QPoint(0, 0)), widget->size());
}

// Every shown label and field lies across within what shows of it (the dialog, or the scroll
// area it sits in) and no label runs into a field.
void ExpectNothingCutOrOverlapping(QWidget* dialog, const QString& what) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);  // as before a paint
    QList<QLabel*> labels;
    QList<QWidget*> fields;
    for (auto* label : dialog->findChildren<QLabel*>())
        if (label->isVisibleTo(dialog) && !label->text().isEmpty() &&
            label->parentWidget()->objectName() != "titleBar")
            labels.push_back(label);
    for (auto* entry : dialog->findChildren<QLineEdit*>())
        if (entry->isVisibleTo(dialog) && !qobject_cast<QComboBox*>(entry->parentWidget()))
            fields.push_back(entry);
    for (auto* box : dialog->findChildren<QComboBox*>())
        if (box->isVisibleTo(dialog))
            fields.push_back(box);
    QList<QWidget*> all(labels.begin(), labels.end());
    all += fields;
    for (auto* widget : all) {
        QRect shown = dialog->rect();
        for (QWidget* up = widget->parentWidget(); up && up != dialog; up = up->parentWidget())
            if (auto* scroll = qobject_cast<QScrollArea*>(up))
                shown = InDialog(scroll->viewport(), dialog);
        QRect r = InDialog(widget, dialog);
        EXPECT_GE(r.left(), shown.left())
            << what.toStdString() << " " << widget->objectName().toStdString();
        EXPECT_LE(r.right(), shown.right())
            << what.toStdString() << " " << widget->objectName().toStdString();
        if (auto* label = qobject_cast<QLabel*>(widget)) {
            EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), r.width())
                << what.toStdString() << " " << label->text().toStdString();
        }
    }
    for (auto* label : labels)
        for (auto* field : fields)
            EXPECT_FALSE(InDialog(label, dialog).intersects(InDialog(field, dialog)))
                << what.toStdString() << " " << label->text().toStdString() << " / "
                << field->objectName().toStdString();
}

TEST_F(DialogLayoutTest, ConversionsLabelEveryFieldWithItsUnitAndFitTheScreen) {
    Run(Dialog::Conversions, [](QWidget* d) {
        auto* kind = Find<QComboBox>(d, "kind");
        for (int k = 0; k < kind->count(); ++k) {
            kind->setCurrentIndex(k);
            ConversionsDialog model;
            model.SetKind(static_cast<ConversionKind>(k + 1));
            static constexpr const char* kNames[] = {"a", "b", "c", "sg", "kg", "lb"};
            for (int f = 0; f < ConversionsDialog::kFieldCount; ++f) {
                auto field = static_cast<ConversionsDialog::Field>(f);
                auto* entry = Find<QLineEdit>(d, kNames[f]);
                auto* label = Find<QLabel>(d, (QString(kNames[f]) + "Label").toUtf8().constData());
                ASSERT_TRUE(entry && label);
                EXPECT_EQ(entry->isVisibleTo(d), model.Visible(field)) << kNames[f];
                EXPECT_EQ(label->isVisibleTo(d), model.Visible(field)) << kNames[f];
                if (!model.Visible(field))
                    continue;
                // The pilot reads the field's unit beside it.
                EXPECT_EQ(label->text().toStdString(), model.Label(field));
                EXPECT_TRUE(label->text().contains(ToQString(model.UnitCode(field)))) << kNames[f];
            }
            ExpectNothingCutOrOverlapping(d, kind->currentText());
        }
        Click(d, "ok");
    });
}

TEST_F(DialogLayoutTest, ConversionsRefuseADecimalCommaAndTextAfterTheNumber) {
    Run(Dialog::Conversions, [this](QWidget* d) {
        Type(d, "a", "7,5");
        EXPECT_EQ(Text(d, "b"), "");  // never the 1.54 of the leading 7
        EXPECT_EQ(Text(d, "problem"), "Litres (ltr): enter a number");
        emit Find<QLineEdit>(d, "a")->editingFinished();  // the pilot leaves the field
        ASSERT_FALSE(platform_.Ui().BoxTexts().empty());
        EXPECT_EQ(platform_.Ui().BoxTexts().back(), "Litres (ltr): enter a number");
        Type(d, "a", "7.5x");
        EXPECT_EQ(Text(d, "c"), "");
        Type(d, "a", "7.5");
        EXPECT_EQ(Text(d, "b"), "1.65");
        EXPECT_EQ(Text(d, "c"), "1.98");
        EXPECT_EQ(Text(d, "problem"), "");
        Click(d, "ok");
    });
}

TEST_F(DialogLayoutTest, TimerShowsTheTimeInTwiceTheProgramsFont) {
    Run(Dialog::Timer, [](QWidget* d) {
        EXPECT_EQ(Find<QLabel>(d, "display")->font().pixelSize(), 22);
        Click(d, "close");
    });
}

TEST_F(DialogLayoutTest, WaypointFormFitsTheScreen) {
    Run(Dialog::DatabaseAdd, [](QWidget* d) {
        ExpectNothingCutOrOverlapping(d, "Add waypoint");
        // The widest position form shows whole in its field.
        auto* latitude = Find<QLineEdit>(d, "latitude");
        EXPECT_GE(latitude->width(),
                  latitude->fontMetrics().horizontalAdvance(latitude->placeholderText()));
        Click(d, "close");
    });
}

}  // namespace
}  // namespace aerix::qt
