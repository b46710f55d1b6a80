// The progress dialog of a run, through the dialog table. A dialog that cannot be shown is no
// reason to stop: everything here then does nothing.
#pragma once

#include <cstdint>

namespace tq {

class Progress {
 public:
  // `total` steps make 100 %.
  Progress(const char* heading, bool can_cancel, std::int64_t total);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void group(short type);
  void file(const char* path);
  void advance();
  // The file line goes blank and the bar to its end.
  void finish();
  // Whether the user pressed cancel and, asked once more, wants to stop.
  bool stopped();

 private:
  void show_position();

  void* dialog_;
  std::int64_t total_;
  std::int64_t done_ = 0;
  short shown_ = -1;  // percent
};

// Shows message `number` of the backup messages with the path that it is about (may be null); the
// answer.
short show_message(short number, const char* path);

inline constexpr short kMessageNoFolder = 4;     // a folder could not be created
inline constexpr short kMessageStopBackup = 5;   // the question whether to stop
inline constexpr short kMessageNameTaken = 6;    // a file of that name is in the chosen folder
inline constexpr short kMessageNotRestored = 7;  // a history names a place that is not restored

}  // namespace tq
