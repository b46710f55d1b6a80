// Table memory: the zero-filled blocks behind every record table.
#pragma once

#include <cstddef>
#include <cstdint>

namespace tq {

// A zero-filled block of count x size bytes from the system's movable memory, locked; null when
// there is none left or the product does not fit. Release it with TblFree.
void* TblAlloc(std::size_t count, std::size_t size) noexcept;

// Unlocks and releases a block; null is allowed.
void TblFree(void* block) noexcept;

// Blocks that are allocated and not yet released, process-wide. A leak counter: tests compare it,
// nothing decides by it.
std::int32_t live_tables() noexcept;

}  // namespace tq
