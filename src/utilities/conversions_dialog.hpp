// The "Conversions" dialog model: the pilot picks a kind of quantity and types into any of its
// fields; the other fields of the kind are rewritten at once, each as "%1.2f" with a decimal
// point. A text that is not wholly a number ("7,5", "7.5x") converts to nothing: the other fields
// are emptied rather than showing the value of its leading digits.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "utilities/conversions.hpp"

namespace aerix {

class ConversionsDialog {
  public:
    // A, B and C are the value fields of every kind; the fuel kind adds the last three.
    enum Field { kA, kB, kC, kSg, kKg, kLb, kFieldCount };

    static constexpr std::string_view kTitle = "Conversions";
    static constexpr std::string_view kDefaultSg = "0.72";
    // The longest text a value field holds.
    static constexpr std::size_t kReadLength = 15;

    ConversionsDialog();

    // Shows the title; the dialog starts with the volume kind.
    void Open();

    // Shows the labels and fields of a kind (1 to 7) and empties its value fields; the specific
    // gravity keeps its text.
    void SetKind(ConversionKind kind);
    ConversionKind Kind() const { return kind_; }

    // The user changed a field's text: the other fields of the kind are recomputed from it, or
    // emptied when it (or the fuel's specific gravity) is not a number. The specific gravity and
    // (in the fuel kind) pounds are inputs to nothing and only stored.
    void Edit(Field field, std::string_view text);
    // What is wrong with the last edit ("Litres (ltr): enter a number"); empty when nothing is.
    const std::string& Problem() const { return problem_; }
    // The user left a field: a text there that is not a number gets the error box.
    void Leave(Field field);

    const std::string& Text(Field field) const { return texts_[field]; }
    bool Visible(Field field) const;
    // The field's label ("Litres (ltr)"), empty when hidden.
    std::string_view Label(Field field) const;
    // The short unit code of a field ("ltr", "kg", "C"), empty when hidden.
    std::string_view UnitCode(Field field) const;

    // Closes the dialog, giving the navigation bar back its "Aerix" title; returns 1.
    int Close();

  private:
    // The field's number; nothing, with the problem noted, when its text is not one.
    std::optional<double> Read(Field field);
    void Write(Field field, double value);
    ConversionKind kind_ = kKindVolume;
    std::array<std::string, kFieldCount> texts_;
    std::string problem_;
};

// A field's text as the dialog reads it: the whole text (blanks around it allowed, at most 15
// characters) as a decimal number with a point; nothing for anything else.
std::optional<double> ReadConversionText(std::string_view text);

}  // namespace aerix
