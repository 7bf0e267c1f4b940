#include "utilities/conversions_dialog.hpp"

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/services.hpp"

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
        {{"Celsius (C)", "Fahrenheit (F)", ""}, {"C", "F", ""}},
        {{"millibar (mb)", "inches (in)", ""}, {"mb", "in", ""}},
        {{"Knots (kt)", "Miles/Hour (mph)", "Km/Hour (kph)"}, {"kt", "mph", "kph"}},
        {{"Litres (ltr)", "US Gallons (usg)", "Imp Gallons (img)"}, {"ltr", "usg", "img"}},
    }};
    return layouts[kind - 1];
}

}  // namespace

double ReadConversionText(std::string_view text) {
    text = text.substr(0, ConversionsDialog::kReadLength);
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    if (!text.empty() && text.front() == '+')
        text.remove_prefix(1);
    double value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec == std::errc::result_out_of_range)  // beyond a double: as strtod, inf or 0
        return std::strtod(std::string(text).c_str(), nullptr);
    return ec == std::errc() ? value : 0.0;
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
    double x = ReadConversionText(text);

    if (kind_ != kKindFuel) {
        auto values = ConvertFrom(kind_, static_cast<ConversionField>(field), x);
        for (int f = kA; f <= kC; ++f) {
            if (values[f])
                Write(static_cast<Field>(f), *values[f]);
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
    FuelQuantities q = FuelFrom(from, x, ReadConversionText(texts_[kSg]));
    const std::array<std::pair<Field, double>, 5> outputs = {{
        {kA, q.litres},
        {kB, q.usGallons},
        {kC, q.impGallons},
        {kKg, q.kg},
        {kLb, q.lb},
    }};
    for (auto [f, value] : outputs) {
        if (f != field)
            Write(f, value);
    }
}

void ConversionsDialog::Open() {
    platform::Sys().ui->SetTitle(kTitle);
}

int ConversionsDialog::Close() {
    platform::Sys().ui->SetTitle("Aerix");
    return 1;
}

void ConversionsDialog::Write(Field field, double value) {
    char buf[400];  // "%1.2f" of the largest double is over 300 characters
    std::snprintf(buf, sizeof buf, "%1.2f", value);
    texts_[field] = buf;
}

}  // namespace aerix
