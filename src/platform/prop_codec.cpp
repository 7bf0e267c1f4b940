#include "platform/prop_codec.hpp"

#include <bit>
#include <cstring>
#include <type_traits>

namespace aerix::platform {

static_assert(std::endian::native == std::endian::little,
              "the stored record form is little-endian and copied as is");

namespace {

template <typename T>
void Put(std::vector<std::uint8_t>& out, const T& v) {
    auto at = out.size();
    out.resize(at + sizeof(T));
    std::memcpy(out.data() + at, &v, sizeof(T));
}

class Reader {
  public:
    explicit Reader(std::span<const std::uint8_t> blob) : blob_(blob) {}
    bool done() const { return at_ == blob_.size(); }

    template <typename T>
    bool Get(T& v) {
        if (blob_.size() - at_ < sizeof(T))
            return false;
        std::memcpy(&v, blob_.data() + at_, sizeof(T));
        at_ += sizeof(T);
        return true;
    }
    bool GetBytes(void* to, std::size_t n) {
        if (blob_.size() - at_ < n)
            return false;
        if (n)
            std::memcpy(to, blob_.data() + at_, n);
        at_ += n;
        return true;
    }

  private:
    std::span<const std::uint8_t> blob_;
    std::size_t at_ = 0;
};

}  // namespace

void EncodeProps(std::span<const PropVal> props, std::vector<std::uint8_t>& out) {
    out.clear();
    for (const PropVal& p : props) {
        Put(out, p.propId);
        std::visit(
            [&out](const auto& v) {
                using T = std::decay_t<decltype(v)>;
                if constexpr (std::is_same_v<T, bool>) {
                    Put(out, static_cast<std::uint8_t>(v ? 1 : 0));
                } else if constexpr (std::is_same_v<T, std::u16string>) {
                    Put(out, static_cast<std::uint32_t>(v.size()));
                    auto at = out.size();
                    out.resize(at + v.size() * sizeof(char16_t));
                    if (!v.empty())
                        std::memcpy(out.data() + at, v.data(), v.size() * sizeof(char16_t));
                } else if constexpr (std::is_same_v<T, std::vector<std::uint8_t>>) {
                    Put(out, static_cast<std::uint32_t>(v.size()));
                    out.insert(out.end(), v.begin(), v.end());
                } else {
                    Put(out, v);
                }
            },
            p.value);
    }
}

// One fixed-size value of type T into p.
template <typename T>
bool ReadScalar(Reader& r, PropVal& p) {
    T v{};
    bool ok = r.Get(v);
    p.value = v;
    return ok;
}

// Reuses out's elements (and their buffers), so reading record after record into the same vector
// allocates next to nothing.
bool DecodeProps(std::span<const std::uint8_t> blob, std::vector<PropVal>& out) {
    Reader r(blob);
    std::size_t n = 0;
    bool ok = true;
    while (ok && !r.done()) {
        std::uint32_t id = 0;
        if (!r.Get(id)) {
            ok = false;
            break;
        }
        if (n == out.size())
            out.emplace_back();
        PropVal& p = out[n];
        p.propId = id;
        switch (PropType(id)) {
            case kCevtI2:
                ok = ReadScalar<std::int16_t>(r, p);
                break;
            case kCevtUi2:
                ok = ReadScalar<std::uint16_t>(r, p);
                break;
            case kCevtI4:
                ok = ReadScalar<std::int32_t>(r, p);
                break;
            case kCevtUi4:
                ok = ReadScalar<std::uint32_t>(r, p);
                break;
            case kCevtR8:
                ok = ReadScalar<double>(r, p);
                break;
            case kCevtBool: {
                std::uint8_t v = 0;
                ok = r.Get(v);
                p.value = v != 0;
                break;
            }
            case kCevtLpwstr: {
                std::uint32_t len = 0;
                ok = r.Get(len) && len <= blob.size();
                if (!ok)
                    break;
                auto* text = std::get_if<std::u16string>(&p.value);
                if (!text)
                    text = &p.value.emplace<std::u16string>();
                text->resize(len);
                ok = r.GetBytes(text->data(), len * sizeof(char16_t));
                break;
            }
            case kCevtBlob: {
                std::uint32_t len = 0;
                ok = r.Get(len) && len <= blob.size();
                if (!ok)
                    break;
                auto* bytes = std::get_if<std::vector<std::uint8_t>>(&p.value);
                if (!bytes)
                    bytes = &p.value.emplace<std::vector<std::uint8_t>>();
                bytes->resize(len);
                ok = r.GetBytes(bytes->data(), len);
                break;
            }
            default:
                ok = false;
        }
        if (ok)
            ++n;
    }
    out.resize(n);
    return ok;
}

}  // namespace aerix::platform
