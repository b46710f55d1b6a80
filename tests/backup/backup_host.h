// A host of the test's own around the backup family: a home folder, and siblings that answer as the
// test wants and write down what they were asked.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support/home.h"
#include "support/own_siblings.h"
#include "tqutil/backup.h"

namespace tq::test {

inline const unsigned char* bytes(const std::string& text) {
  return reinterpret_cast<const unsigned char*>(text.c_str());
}

class BackupHost : public TestHome {
 public:
  BackupHost();

  // What was shown and asked, in order. `@` stands for the home in what tells of a path.
  std::vector<std::string> log;
  // The bar's last position, and after how many files the user presses cancel (-1: never).
  int percent = -1;
  int cancel_after = -1;
  bool really_stop = true;
  // Answers about missing folders, taken from the front; none left: cancel.
  std::vector<std::pair<short, std::string>> folder_answers;
  // Related files by the path asked for; a path that is not here is its own data set. An empty list
  // fails the query from the n-th one on.
  std::map<std::string, std::vector<std::string>> related;
  int related_queries_left = 1000;
  short classified = 0;  // kind that FldComClassifyFile gives; negative: it cannot tell
  bool has_mail_store = false;
  std::function<void()> transfer = [] {};  // what AdrConvStartTransfer does
  int busy = 0;                            // how often AdrConvIsBusy still says so

  struct Group {
    short type;
    std::string name;
    std::vector<std::string> files;  // relative to the home
  };
  // A run that is ready to start; 1 when it refuses something.
  short prepare(CBackUpCtl& run, short kind, const std::vector<Group>& groups) const;
  // A whole run; the result of its first step that fails.
  short back_up(short kind, const std::vector<Group>& groups, const std::string& info = "i") const;
  // Puts a backup's time into its history.
  void set_time(const std::string& id, const std::string& time) const;
  // "id kind group-count" of every listed backup.
  static std::vector<std::string> listed(short kind);
  // The files of all backups, in the order of the list.
  struct Listed {
    std::string id, path, copy;
    uint32_t size;
    short kind;
  };
  static std::vector<Listed> files();
  // What every backup can bring back: id -> original path -> bytes of the copy. A listed copy that
  // is missing or has another size than recorded fails the test.
  std::map<std::string, std::map<std::string, std::string>> restorable() const;

  // A text with the home for each `@`, and one with `@` for the home.
  std::string filled(std::string text) const { return replaced(std::move(text), "@", path()); }
  std::string relative(std::string text) const { return replaced(std::move(text), path(), "@"); }

 private:
  static std::string replaced(std::string text, const std::string& from, const std::string& to);
  const char* const* give_related(const std::string& path, int32_t* count);

  OwnSiblings own_{this};
  std::string message_;
  int files_done_ = 0;
  std::vector<std::string> related_;
  std::vector<const char*> related_pointers_;
};

}  // namespace tq::test
