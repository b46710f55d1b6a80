/* The field files (".FLD") that an application offers for choice, in three lists.
 *
 * Which folders they come from the `fldcom` sibling says; a file that it does not take for a field
 * file is left out. First the class, then the same over handles: ten of them, 0 is none. Outputs of
 * texts need TQ_PATH_SIZE bytes; outputs may be null. One calling thread at a time.
 */
#ifndef TQUTIL_CSVINFO_H_
#define TQUTIL_CSVINFO_H_

#include <stdint.h>
#include <tqutil/config.h>
#include <tqutil/records.h>

#ifdef __cplusplus
#include <memory>

/* Three lists, each empty until its Init was called. The object owns them. */
class TQ_API CCsvInfoCtl {
 public:
  CCsvInfoCtl();
  ~CCsvInfoCtl();
  CCsvInfoCtl(const CCsvInfoCtl&) = delete;
  CCsvInfoCtl& operator=(const CCsvInfoCtl&) = delete;

  /* List 1: the formats of known programs (folder 1) by the first six characters of the file name;
   * what is shown begins at the eighth and has no extension. List 2: folders 2a and 2b together,
   * by name. List 3: folder 3, by name. A folder that cannot be searched gives nothing. 0, or 1
   * when memory is out. */
  short GetCsvFldInfoInit1();
  short GetCsvFldInfoInit2();
  short GetCsvFldInfoInit3();

  /* The next entry of a list: the two numbers of the field file's header, name and path. 0, or 1 at
   * the end with the outputs untouched. */
  short GetCsvFldInfoNext1(short* number, short* number2, char* name, char* path);
  short GetCsvFldInfoNext2(short* number, short* number2, char* path);
  short GetCsvFldInfoNext3(short* number, char* name, char* path);
  /* The first entry of list 1 with that file number; the walk stays where it is. 0, or 1 with empty
   * texts when there is none. */
  short GetCsvFldInfo1(short number, char* name, char* path);

 private:
  struct State;
  std::unique_ptr<State> state_;
};
#endif

TQ_BEGIN_DECLS

/* Each Init makes an object of its own, so a handle walks the list that it was opened for. A
 * handle, or 0 when all slots are taken or memory is out. */
int32_t TQ_CALL GetCsvFldInfoInit1(void) TQ_NOEXCEPT;
int32_t TQ_CALL GetCsvFldInfoInit2(void) TQ_NOEXCEPT;
int32_t TQ_CALL GetCsvFldInfoInit3(void) TQ_NOEXCEPT;
/* As the members; -1 for handle 0 and dead handles. */
short TQ_CALL GetCsvFldInfoNext1(short* number, short* number2, char* name, char* path,
                                 int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCsvFldInfoNext2(short* number, short* number2, char* path,
                                 int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCsvFldInfoNext3(short* number, char* name, char* path, int32_t handle) TQ_NOEXCEPT;
short TQ_CALL GetCsvFldInfo1(short number, char* name, char* path, int32_t handle) TQ_NOEXCEPT;
/* 1 for handle 0, else 0. */
short TQ_CALL GetCsvFldInfoEnd(int32_t handle) TQ_NOEXCEPT;

TQ_END_DECLS

#endif /* TQUTIL_CSVINFO_H_ */
