// Storage places for charts besides main memory: removable media mounted under /media/USER and
// /run/media/USER stand in for the storage cards. A pocket path whose first component is a
// card's name ("\CARD\charts\x.png") lives on that card.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace aerix {

struct StorageCard {
    std::u16string name;
    std::filesystem::path mount;
};

// The mounted cards, by name.
std::vector<StorageCard> FindStorageCards();
// The folders searched for cards (tests point them elsewhere); empty restores the default.
void SetStorageCardRoots(std::vector<std::filesystem::path> roots);

// The name of card `entry` (from 0) and the number of cards in *count; "No Card" when there is
// none.
std::u16string EnumerateStorageCards(int* count, int entry);

// A pocket path on a card or under the data root, to the real file.
std::filesystem::path ResolveStoragePath(std::u16string_view pocketPath);

}  // namespace aerix
