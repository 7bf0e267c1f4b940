#include "utilities/conversions_dialog.hpp"

#include <string>

#include "platform/message_box.hpp"
#include "platform/services.hpp"
#include "platform/text_numbers.hpp"
#include "utilities/entry_text.hpp"

namespace aerix {

namespace {

struct KindLayout {
    std::array<std::string_view, 3> labels;  // A, B, C; empty = hidden
    std::array<std::string_view, 3> codes;
};

const KindLayout& LayoutOf(ConversionKind kind) {
    static const std::array<KindLayout, 7> layouts = {{
        {{"Litres (ltr)", "Imp Galls (img)", "US Galls (usg)"}, {"ltr", "img", "usg"}},
        {{"Pounds (lb)", "Kilogram (kg)", ""}, {"lb", "kg", ""}},
        {{"Nautical mile (nm)", "Statute mile (sm)", "Kilometre (km)"}, {"nm", "sm", "km"}},
        {{"Celsius (\u00B0C)", "Fahrenheit (\u00B0F)", ""}, {"C", "F", ""}},
        {{"millibar (mb)", "inches (in)", ""}, {"mb", "in", ""}},
        {{"Knots (kt)", "Miles/Hour (mph)", "Km/Hour (kph)"}, {"kt", "mph", "kph"}},
        {{"Litres (ltr)", "US Gallons (usg)", "Imp Gallons (img)"}, {"ltr", "usg", "img"}},
    }};
    return layouts[kind - 1];
}

}  // namespace

std::optional<double> ReadConversionText(std::string_view text) {
    if (text.size() > ConversionsDialog::kReadLength)
        return std::nullopt;
    return ParseDecimal(text);
}

ConversionsDialog::ConversionsDialog() {
    texts_[kSg] = kDefaultSg;
}

void ConversionsDialog::SetKind(ConversionKind kind) {
    if (kind < kKindVolume || kind > kKindFuel)
        return;
    if (kind_ == kind)
        return;
    kind_ = kind;
    problem_.clear();
    for (Field f : {kA, kB, kC, kKg, kLb})
        texts_[f].clear();
}

bool ConversionsDialog::Visible(Field field) const {
    if (field == kSg || field == kKg || field == kLb)
        return kind_ == kKindFuel;
    return !LayoutOf(kind_).labels[field].empty();
}

std::string_view ConversionsDialog::Label(Field field) const {
    if (!Visible(field))
        return {};
    switch (field) {
        case kSg:
            return "Specific gravity (sg)";
        case kKg:
            return "Kilograms (kg)";
        case kLb:
            return "Pounds (lb)";
        default:
            return LayoutOf(kind_).labels[field];
    }
}

std::string_view ConversionsDialog::UnitCode(Field field) const {
    if (!Visible(field))
        return {};
    switch (field) {
        case kSg:
            return "sg";
        case kKg:
            return "kg";
        case kLb:
            return "lb";
        default:
            return LayoutOf(kind_).codes[field];
    }
}

void ConversionsDialog::Edit(Field field, std::string_view text) {
    if (!Visible(field))
        return;
    texts_[field] = text;
    problem_.clear();
    std::optional<double> x = Read(field);

    if (kind_ != kKindFuel) {
        auto values = ConvertFrom(kind_, static_cast<ConversionField>(field), x.value_or(0.0));
        for (int f = kA; f <= kC; ++f) {
            if (!values[f])
                continue;
            if (x)
                Write(static_cast<Field>(f), *values[f]);
            else
                texts_[f].clear();
        }
        return;
    }

    FuelSource from;
    switch (field) {
        case kA:
            from = kFuelFromLitres;
            break;
        case kB:
            from = kFuelFromUsGallons;
            break;
        case kC:
            from = kFuelFromImpGallons;
            break;
        case kKg:
            from = kFuelFromKg;
            break;
        default:
            return;  // specific gravity and pounds feed nothing
    }
    std::optional<double> sg = x ? Read(kSg) : std::nullopt;
    FuelQuantities q = FuelFrom(from, x.value_or(0.0), sg.value_or(0.0));
    const std::array<std::pair<Field, double>, 5> outputs = {{
        {kA, q.litres},
        {kB, q.usGallons},
        {kC, q.impGallons},
        {kKg, q.kg},
        {kLb, q.lb},
    }};
    for (auto [f, value] : outputs) {
        if (f == field)
            continue;
        if (sg)
            Write(f, value);
        else
            texts_[f].clear();
    }
}

void ConversionsDialog::Leave(Field field) {
    if (Visible(field) && !texts_[field].empty() && !ReadConversionText(texts_[field]))
        platform::ShowError(EnterNumberMessage(Label(field)));
}

std::optional<double> ConversionsDialog::Read(Field field) {
    auto value = ReadConversionText(texts_[field]);
    // An emptied field is no mistake; the others are only emptied with it.
    if (!value && !texts_[field].empty() && problem_.empty())
        problem_ = EnterNumberMessage(Label(field));
    return value;
}

void ConversionsDialog::Open() {
    platform::SetTitle(kTitle);
}

int ConversionsDialog::Close() {
    platform::SetTitle("Aerix");
    return 1;
}

void ConversionsDialog::Write(Field field, double value) {
    texts_[field] = FormatFixed(value, 2);
}

}  // namespace aerix
