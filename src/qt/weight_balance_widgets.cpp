// "Weight and balance" (a load for each station, fuel in the aircraft's fuel units) and its
// result (figures, verdict and the envelope graph drawn through the shared canvas).
#include <QFormLayout>
#include <QGridLayout>
#include <QPainter>
#include <QScrollArea>
#include <vector>

#include "aircraft/envelope_graph.hpp"
#include "aircraft/weight_balance_dialogs.hpp"
#include "app/app_state.hpp"
#include "platform/text.hpp"
#include "qt/aircraft_dialog_widgets.hpp"
#include "qt/dialog_frame.hpp"
#include "qt/graphics/qpainter_canvas.hpp"
#include "qt/widget_support.hpp"

namespace aerix::qt {

namespace {

class LoadingWidget : public DialogFrame {
  public:
    explicit LoadingWidget(QWidget* parent)
        : DialogFrame(parent, ToQString(WeightBalanceLoadingDialog::kTitle)) {
        opened_ = model_.Open();
        const AircraftRecord& a = model_.Aircraft();
        auto* heading = new QLabel(
            ToQString(a.Name) + QStringLiteral("  ") + ToQString(a.TypeDesignator), this);
        heading->setObjectName("aircraft");
        QFont bold = heading->font();
        bold.setBold(true);
        heading->setFont(bold);
        Body()->addWidget(heading);
        // Many stations scroll; the usual five to seven fit the screen.
        auto* scroll = new QScrollArea(this);
        scroll->setWidgetResizable(true);
        scroll->setFrameShape(QFrame::NoFrame);
        scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        auto* page = new QWidget;
        auto* form = new QFormLayout(page);
        form->setContentsMargins(0, 0, 0, 0);
        form->setVerticalSpacing(3);
        const auto& rows = model_.Rows();
        for (std::size_t i = 0; i < rows.size(); ++i) {
            QString name = QStringLiteral("load%1").arg(i);
            auto* entry = AddEntry(form, ToQString(model_.Label(i)), qPrintable(name),
                                   ToQString(rows[i].Text));
            entry->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
            // Narrow enough that label and field share the screen beside the scroll bar.
            entry->setMaximumWidth(100);
            if (rows[i].Fixed) {
                entry->setReadOnly(true);
                entry->setToolTip(QStringLiteral("The aircraft's empty weight (Setup A/c)"));
            }
            if (rows[i].Station.StationKind == 2) {
                auto* note = new QLabel(ToQString(model_.Note(i)), page);
                note->setObjectName(QStringLiteral("note%1").arg(i));
                form->addRow(QString(), note);
                notes_.push_back({i, note});
            }
            connect(entry, &QLineEdit::textEdited, this, [this, i](const QString& text) {
                model_.SetText(i, ToUtf8(text));
                for (auto& [row, note] : notes_)
                    note->setText(ToQString(model_.Note(row)));
            });
        }
        auto* sg = new QLabel(QStringLiteral("Fuel specific gravity 0.72"), page);
        sg->setStyleSheet(QStringLiteral("color: #555;"));
        form->addRow(sg);
        scroll->setWidget(page);
        Body()->addWidget(scroll, 1);
    }

    int Run() {
        if (!opened_) {
            model_.Close();
            return kDialogCancel;
        }
        return DialogFrame::Run();
    }

  protected:
    bool OnOk() override {
        if (!model_.Ok())
            return false;
        model_.Close();
        return true;
    }
    void OnClose() override { model_.Close(); }

  private:
    WeightBalanceLoadingDialog model_{g_app.settings, g_app.aircraft};
    bool opened_ = false;
    std::vector<std::pair<std::size_t, QLabel*>> notes_;
};

// The envelope graph, painted by the aircraft code on the Qt canvas.
class EnvelopeGraphWidget : public QWidget {
  public:
    EnvelopeGraphWidget(QWidget* parent, const WeightBalanceResultDialog& model)
        : QWidget(parent), model_(model) {
        setObjectName("graph");
        setMinimumHeight(120);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        QPainterCanvas canvas(painter, width(), height());
        DrawEnvelopeGraph(canvas, platform::Rect{0, 0, width(), height()}, model_.Aircraft(),
                          model_.Envelope(), model_.Result());
    }

  private:
    const WeightBalanceResultDialog& model_;
};

class ResultWidget : public DialogFrame {
  public:
    explicit ResultWidget(QWidget* parent)
        : DialogFrame(parent, ToQString(WeightBalanceResultDialog::kTitle)) {
        opened_ = model_.Open();
        Body()->setSpacing(2);
        auto lines = model_.VerdictLines();
        auto* verdict = new QLabel(ToQString(lines.front()), this);
        verdict->setObjectName("verdict");
        verdict->setAlignment(Qt::AlignCenter);
        verdict->setStyleSheet(model_.Result().Within()
                                   ? QStringLiteral("font-weight: bold; color: #006e00;")
                                   : QStringLiteral("font-weight: bold; color: #d20000;"));
        Body()->addWidget(verdict);
        QString why;
        for (std::size_t i = 1; i < lines.size(); ++i)
            why += (why.isEmpty() ? QString() : QStringLiteral("\n")) + ToQString(lines[i]);
        auto* reasons = new QLabel(why, this);
        reasons->setObjectName("reasons");
        reasons->setWordWrap(true);
        reasons->setVisible(!why.isEmpty());
        Body()->addWidget(reasons);

        Body()->addWidget(new EnvelopeGraphWidget(this, model_), 1);

        auto* grid = new QGridLayout;
        grid->setHorizontalSpacing(6);
        grid->setVerticalSpacing(0);
        static const char* kNames[] = {"weight", "moment", "arm", "fuel", "takeoff", "zeroFuel"};
        auto figures = model_.Figures();
        for (std::size_t i = 0; i < figures.size(); ++i) {
            auto* label = new QLabel(ToQString(figures[i].first), this);
            auto* value = new QLabel(ToQString(figures[i].second), this);
            value->setObjectName(i < 6 ? kNames[i] : "figure");
            int row = static_cast<int>(i);
            grid->addWidget(label, row, 0);
            grid->addWidget(value, row, 1);
        }
        grid->setColumnStretch(1, 1);
        Body()->addLayout(grid);
    }

    int Run() {
        if (!opened_) {
            model_.Close();
            return kDialogCancel;
        }
        return DialogFrame::Run();
    }

  protected:
    bool OnOk() override {
        model_.Close();
        return true;
    }
    void OnClose() override { model_.Close(); }

  private:
    WeightBalanceResultDialog model_{g_app.aircraft};
    bool opened_ = false;
};

}  // namespace

void RegisterWeightBalanceDialogs(QtDialogHost& host) {
    host.Register(Dialog::WeightBalanceLoading, RunWidget<LoadingWidget>);
    host.Register(Dialog::WeightBalanceResult, RunWidget<ResultWidget>);
}

}  // namespace aerix::qt
