// The "Conversions" dialog model: the pilot picks a kind of quantity and types into any of its
// fields; the other fields of the kind are rewritten at once, each as "%1.2f".
#pragma once

#include <array>
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
    // The longest text a value field holds when it is read.
    static constexpr std::size_t kReadLength = 15;

    ConversionsDialog();

    // Shows the title; the dialog starts with the volume kind.
    void Open();

    // Shows the labels and fields of a kind (1 to 7) and empties its value fields; the specific
    // gravity keeps its text.
    void SetKind(ConversionKind kind);
    ConversionKind Kind() const { return kind_; }

    // The user changed a field's text: the other fields of the kind are recomputed from it.
    // The specific gravity and (in the fuel kind) pounds are inputs to nothing and only stored.
    void Edit(Field field, std::string_view text);

    const std::string& Text(Field field) const { return texts_[field]; }
    bool Visible(Field field) const;
    // The field's label ("Litres (ltr)"), empty when hidden.
    std::string_view Label(Field field) const;
    // The short unit code of a field ("ltr", "kg", "C"), empty when hidden.
    std::string_view UnitCode(Field field) const;

    // Closes the dialog, giving the navigation bar back its "Aerix" title; returns 1.
    int Close();

  private:
    void Write(Field field, double value);
    ConversionKind kind_ = kKindVolume;
    std::array<std::string, kFieldCount> texts_;
};

// A field's text as the dialog reads it: its first 15 characters through a decimal conversion
// that takes the leading number and ignores the rest (an empty or non-numeric text reads 0).
double ReadConversionText(std::string_view text);

}  // namespace aerix
