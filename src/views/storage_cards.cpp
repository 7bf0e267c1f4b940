#include "views/storage_cards.hpp"

#include <algorithm>
#include <cstdlib>
#include <system_error>

#include "platform/data_root.hpp"
#include "platform/services.hpp"
#include "platform/text.hpp"

namespace aerix {

namespace fs = std::filesystem;

namespace {

std::vector<fs::path>& CardRoots() {
    static std::vector<fs::path> roots;
    return roots;
}

std::vector<fs::path> DefaultRoots() {
    const char* user = std::getenv("USER");
    if (user == nullptr || *user == '\0')
        return {};
    return {fs::path("/media") / user, fs::path("/run/media") / user};
}

}  // namespace

void SetStorageCardRoots(std::vector<fs::path> roots) {
    CardRoots() = std::move(roots);
}

std::vector<StorageCard> FindStorageCards() {
    std::vector<StorageCard> cards;
    const std::vector<fs::path> roots = CardRoots().empty() ? DefaultRoots() : CardRoots();
    for (const fs::path& root : roots) {
        std::error_code ec;
        std::vector<StorageCard> here;
        for (const auto& entry : fs::directory_iterator(root, ec)) {
            if (entry.is_directory(ec))
                here.push_back({Utf8ToUtf16(entry.path().filename().string()), entry.path()});
        }
        std::sort(here.begin(), here.end(),
                  [](const StorageCard& a, const StorageCard& b) { return a.name < b.name; });
        cards.insert(cards.end(), here.begin(), here.end());
    }
    return cards;
}

std::u16string EnumerateStorageCards(int* count, int entry) {
    std::vector<StorageCard> cards = FindStorageCards();
    if (cards.empty())
        return u"No Card";
    if (count != nullptr)
        *count = static_cast<int>(cards.size());
    if (entry < 0 || entry >= static_cast<int>(cards.size()))
        return u"No Card";
    return cards[static_cast<std::size_t>(entry)].name;
}

fs::path ResolveStoragePath(std::u16string_view pocketPath) {
    // A card confines its paths as the data root does; the root's mapping refuses and says why.
    if (!platform::DataRoot::Refusal(Utf16ToUtf8(pocketPath)).empty())
        return platform::Sys().root->Resolve(pocketPath);
    std::u16string_view rest = pocketPath;
    while (!rest.empty() && (rest.front() == u'\\' || rest.front() == u'/'))
        rest.remove_prefix(1);
    std::size_t cut = rest.find_first_of(u"\\/");
    if (cut != std::u16string_view::npos) {
        std::u16string_view first = rest.substr(0, cut);
        for (const StorageCard& card : FindStorageCards()) {
            if (card.name == first) {
                fs::path path = card.mount;
                std::string tail = Utf16ToUtf8(rest.substr(cut + 1));
                std::replace(tail.begin(), tail.end(), '\\', '/');
                return path / tail;
            }
        }
    }
    return platform::Sys().root->Resolve(pocketPath);
}

}  // namespace aerix
