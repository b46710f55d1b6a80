// Times ours and a peer in turns in one process, so that both see the machine in the same state.
// The reported time is ours, in processor time, since machines are shared; the counters have the
// peer's, the median of the ratios, and, where the two sides build something, the bytes that ours
// holds on to and their ratio.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <utility>
#include <vector>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace tq::bench {

inline double heap_bytes() {
#ifdef __GLIBC__
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd);
#else
  return 0;
#endif
}

struct Cost {
  double seconds;
  double bytes;
};

// `side()` returns what it made, and `check` looks at it outside the measured time.
template <class Side, class Check>
Cost measure(Side& side, Check& check) {
  const double before = heap_bytes();
  const std::clock_t start = std::clock();
  auto made = side();
  const std::clock_t end = std::clock();
  const double bytes = heap_bytes() - before;
  check(made);
  return {static_cast<double>(end - start) / CLOCKS_PER_SEC, bytes};
}

template <class Ours, class Peer, class Check>
void side_by_side(benchmark::State& state, Ours ours, Peer peer, Check check) {
  std::vector<double> ratios, peers;
  Cost own{}, other{};
  for (auto _ : state) {
    own = measure(ours, check);
    other = measure(peer, check);
    state.SetIterationTime(own.seconds);
    ratios.push_back(own.seconds / other.seconds);
    peers.push_back(other.seconds * 1000);
  }
  const auto median = [](std::vector<double>& values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
  };
  state.counters["peer_ms"] = median(peers);
  state.counters["ratio"] = median(ratios);
  if (own.bytes > 1e6) state.counters["MB"] = own.bytes / 1e6;
  if (own.bytes > 1e6) state.counters["mem_ratio"] = own.bytes / other.bytes;
}

}  // namespace tq::bench
