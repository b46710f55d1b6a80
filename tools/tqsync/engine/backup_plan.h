// Decisions about backups, made from what is known about them and about the files, without touching
// either.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tqsync {

// What is known about one file that a backup holds.
struct CopyFacts {
  std::uint64_t recorded = 0;         // size when it was backed up
  std::optional<std::uint64_t> copy;  // size of the copy; nothing: it is gone
  std::optional<std::uint64_t> now;   // size of the original now; nothing: it is gone
  bool same_time = false;             // the original was last changed when the copy says
};

// Whether a copy is whole: empty, or what is wrong with it.
std::string copy_fault(const CopyFacts& facts);

// Whether a copy lies in the folder of some backup in the backup folder; a history can claim any
// place. Absolute native paths.
bool is_copy_in(const std::string& folder, const std::string& copy);

// What a restore does to the file.
enum class Effect { kNothing, kReplaces, kBringsBack };
Effect effect_of(const CopyFacts& facts);
const char* effect_name(Effect effect);

// The places of the backups that go when `keep` of each kind may stay. Generations count from 1,
// the newest.
std::vector<std::size_t> beyond(std::span<const int> generations, int keep);

// Where files go when they are put below `folder` instead of their own places: their paths as seen
// from the deepest folder that all of them lie in, so that no two meet. Paths are native, with `/`
// or the system's separator; a single file keeps its name.
std::vector<std::string> places_below(const std::string& folder,
                                      std::span<const std::string> paths);

}  // namespace tqsync
