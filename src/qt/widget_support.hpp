// Small helpers the dialog widgets share: text between the models' UTF-8/UTF-16 strings and Qt,
// labelled entry fields, and the runner every registration uses.
#pragma once

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <string>
#include <string_view>

namespace aerix::qt {

inline QString ToQString(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline QString ToQString(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string ToUtf8(const QString& text) {
    return text.toStdString();
}

// A line edit named `name` in a form row labelled `label`.
inline QLineEdit* AddEntry(QFormLayout* form, const QString& label, const char* name,
                           const QString& text = {}) {
    auto* entry = new QLineEdit(text);
    entry->setObjectName(name);
    form->addRow(label, entry);
    return entry;
}

// A read-only figure named `name` in a form row labelled `label`.
inline QLabel* AddFigure(QFormLayout* form, const QString& label, const char* name) {
    auto* figure = new QLabel;
    figure->setObjectName(name);
    form->addRow(label, figure);
    return figure;
}

// Refills a list with a model's lines, keeping the selected row when it still exists; returns the
// row now selected (-1 for none) for the model to follow.
template <typename Lines>
int RefillList(QListWidget* list, const Lines& lines, int selected) {
    list->blockSignals(true);
    list->clear();
    for (const auto& line : lines)
        list->addItem(ToQString(line));
    list->setCurrentRow(selected < list->count() ? selected : -1);
    list->blockSignals(false);
    return list->currentRow();
}

// Builds the widget over the main window, runs it and returns how it ended.
template <typename Widget>
int RunWidget(QWidget* parent) {
    Widget dialog(parent);
    return dialog.Run();
}

}  // namespace aerix::qt
