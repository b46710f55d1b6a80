#include "engine/backup_plan.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "text/native_path.h"
#include "text/numbers.h"

namespace tqsync {
namespace {

namespace fs = std::filesystem;

// The deepest folder that both paths lie in; empty for paths on different drives.
fs::path common_folder(const fs::path& a, const fs::path& b) {
  const auto [end, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  fs::path common;
  for (auto name = a.begin(); name != end; ++name) common /= *name;
  return common;
}

}  // namespace

std::string copy_fault(const CopyFacts& facts) {
  if (!facts.copy) return "the copy is missing";
  // Histories hold the low 32 bits of a size.
  if (static_cast<std::uint32_t>(*facts.copy) == static_cast<std::uint32_t>(facts.recorded)) {
    return "";
  }
  return "the copy has " + counted(*facts.copy, "byte") + " instead of " +
         std::to_string(facts.recorded);
}

Effect effect_of(const CopyFacts& facts) {
  if (!facts.now) return Effect::kBringsBack;
  const bool same_size =
      static_cast<std::uint32_t>(*facts.now) == static_cast<std::uint32_t>(facts.recorded);
  return same_size && facts.same_time ? Effect::kNothing : Effect::kReplaces;
}

const char* effect_name(Effect effect) {
  switch (effect) {
    case Effect::kReplaces:
      return "replace";
    case Effect::kBringsBack:
      return "bring back";
    case Effect::kNothing:
      break;
  }
  return "same";
}

std::vector<std::size_t> beyond(std::span<const int> generations, int keep) {
  std::vector<std::size_t> going;
  for (std::size_t i = 0; i < generations.size(); ++i) {
    if (generations[i] > keep) going.push_back(i);
  }
  return going;
}

bool is_copy_in(const std::string& folder, const std::string& copy) {
  const fs::path inner = to_path(copy).lexically_normal().lexically_relative(to_path(folder) / "");
  return std::distance(inner.begin(), inner.end()) == 2 && *inner.begin() != "..";
}

std::vector<std::string> places_below(const std::string& folder,
                                      std::span<const std::string> paths) {
  std::vector<std::string> places;
  if (paths.empty()) return places;
  // Without "..", so that no place is outside the folder.
  std::vector<fs::path> whole_paths;
  for (const std::string& path : paths) {
    whole_paths.push_back((fs::path("/") / to_path(path)).lexically_normal());
  }
  fs::path common = whole_paths.front().parent_path();
  for (const fs::path& path : whole_paths) common = common_folder(common, path.parent_path());
  for (const fs::path& path : whole_paths) {
    const fs::path inner = path.lexically_relative(common);
    // Without a common folder (different drives) the drive's letter keeps them apart.
    const std::string drive = path.root_name().string().substr(0, 1);
    const fs::path place = common.empty() ? fs::path(drive) / path.relative_path() : inner;
    places.push_back(from_path(to_path(folder) / place));
  }
  return places;
}

}  // namespace tqsync
