// The registry hive: keys under HKEY_LOCAL_MACHINE holding REG_SZ, REG_DWORD and REG_BINARY values
// whose bytes and byte lengths stay exactly as written (a REG_DWORD written with a length of 1
// stays one byte long; the settings rely on that). The calls behave as the platform's did:
// error codes, create-or-open with a disposition, queries that copy into the caller's buffer.
// The hive lives in a REGEDIT4-style text file, saved atomically when a changed key is closed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace aerix::platform {

using HKEY = std::uint32_t;
constexpr HKEY kHkeyLocalMachine = 0x80000002;

constexpr long kErrorSuccess = 0;
constexpr long kErrorFileNotFound = 2;
constexpr long kErrorAccessDenied = 5;
constexpr long kErrorInvalidHandle = 6;
constexpr long kErrorWriteFault = 29;
constexpr long kErrorInvalidParameter = 87;
constexpr long kErrorMoreData = 234;
constexpr long kErrorNoMoreItems = 259;

constexpr std::uint32_t kRegSz = 1;
constexpr std::uint32_t kRegBinary = 3;
constexpr std::uint32_t kRegDword = 4;

// The settings take a few kB; a larger file is refused unread.
constexpr std::uintmax_t kMaxRegistryFileBytes = 1024 * 1024;

constexpr std::uint32_t kRegCreatedNewKey = 1;
constexpr std::uint32_t kRegOpenedExistingKey = 2;

enum class RegOp { CreateKey, OpenKey, QueryValue, SetValue, EnumKey, CloseKey };

struct RegValue {
    std::u16string name;
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;
};

class RegistryHive {
  public:
    // Reads the hive from file (missing file: empty hive). A file that cannot be parsed or is
    // larger than kMaxRegistryFileBytes is moved aside to <file>.bad (then <file>.bad.1, ...,
    // never over an earlier one) and the hive starts empty; LoadNotice then says so.
    explicit RegistryHive(std::filesystem::path file);
    // An in-memory hive that is never saved.
    RegistryHive();

    long CreateKey(HKEY parent, std::u16string_view subKey, HKEY* result,
                   std::uint32_t* disposition);
    long OpenKey(HKEY parent, std::u16string_view subKey, HKEY* result);
    // As the platform call: data may be null to ask for the size; a buffer smaller than the
    // value gives kErrorMoreData with *size set to the value's length.
    long QueryValue(HKEY key, std::u16string_view name, std::uint32_t* type, void* data,
                    std::uint32_t* size);
    long SetValue(HKEY key, std::u16string_view name, std::uint32_t type, const void* data,
                  std::uint32_t size);
    // The name of the index-th subkey, or kErrorNoMoreItems.
    long EnumKey(HKEY key, std::uint32_t index, std::u16string* name);
    // Closes the handle; saves the hive when it holds unsaved changes.
    long CloseKey(HKEY key);

    // Writes the hive to its file now (temporary file, then rename). True when saved.
    bool Save();

    // A one-time, plain-words notice about a hive file that could not be read.
    std::optional<std::string> TakeLoadNotice();

    // Values of a key, by full path below HKEY_LOCAL_MACHINE (for tools and tests).
    std::vector<RegValue> Values(std::u16string_view keyPath) const;
    bool KeyExists(std::u16string_view keyPath) const;

    // Lets tests make a call fail: the function returns an error code, or kErrorSuccess to let
    // the call go on.
    void SetFaultInjector(std::function<long(RegOp, std::u16string_view name)> injector);

    const std::filesystem::path& File() const { return file_; }

    // Text form of the hive and its parser (exposed for tests).
    std::string Serialize() const;

  private:
    struct Key {
        std::u16string path;  // spelling as created
        std::vector<RegValue> values;
    };

    long Inject(RegOp op, std::u16string_view name) const;
    std::optional<std::u16string> PathOf(HKEY key) const;
    HKEY NewHandle(const std::u16string& folded);
    bool EnsureKey(const std::u16string& full);
    bool SaveLocked();
    void Load();

    mutable std::mutex mutex_;
    std::filesystem::path file_;
    std::map<std::u16string, Key> keys_;  // by case-folded path
    std::map<HKEY, std::u16string> handles_;
    HKEY nextHandle_ = 0x100;
    bool dirty_ = false;
    bool keepFile_ = false;  // the unreadable file could not be set aside: never save over it
    std::optional<std::string> notice_;
    std::function<long(RegOp, std::u16string_view)> injector_;
};

// Parses REGEDIT4 text into keys (folded path -> key spelling and values). Returns an error text
// naming the line on failure.
struct ParsedKey {
    std::u16string path;
    std::vector<RegValue> values;
};
std::optional<std::string> ParseRegistryText(std::string_view text, std::vector<ParsedKey>* keys);

}  // namespace aerix::platform
