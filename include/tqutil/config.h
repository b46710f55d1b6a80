/* What the other headers need from the compiler: export marks, calling conventions and C linkage.
 *
 * Every public header is usable from C11 and from C++20, except those that declare classes. Define
 * TQUTIL_STATIC when you link the library's sources statically. Nothing else needs a definition.
 */
#ifndef TQUTIL_CONFIG_H_
#define TQUTIL_CONFIG_H_

/* TQ_API marks a class whose public members the library exports.
 * On ELF systems it gives the class default visibility, for the members' sake; which of them really
 * leave the library is decided by src/api/exports.txt alone. It is empty on Windows, where the same
 * list makes the .def file, and in static builds. Flat functions need no mark: TQ_BEGIN_DECLS makes
 * them visible. */
#if defined(TQUTIL_STATIC) || defined(_WIN32)
#define TQ_API
#else
#define TQ_API __attribute__((visibility("default")))
#endif

/* TQ_STDCALL is the convention of the functions that carry a decorated name (`_Name@N`) in the DLL.
 * It only means something in a 32-bit Windows process; elsewhere it is empty. Write it between the
 * result type and the name. */
#if defined(_WIN32) && !defined(_WIN64)
#define TQ_STDCALL __stdcall
#else
#define TQ_STDCALL
#endif

/* TQ_CALL is the convention of every other flat function: the compiler's default, cdecl. */
#if defined(_WIN32) && !defined(_WIN64)
#define TQ_CALL __cdecl
#else
#define TQ_CALL
#endif

/* TQ_NOEXCEPT stands after the parameter list of a flat function: none of them ever throws. */
#ifdef __cplusplus
#define TQ_NOEXCEPT noexcept
#else
#define TQ_NOEXCEPT
#endif

/* TQ_BEGIN_DECLS and TQ_END_DECLS enclose a header's flat functions and tables: C linkage for C++,
 * and default visibility on ELF systems. Neither takes a semicolon. */
#ifdef __cplusplus
#define TQ_EXTERN_C_BEGIN_ extern "C" {
#define TQ_EXTERN_C_END_ }
#else
#define TQ_EXTERN_C_BEGIN_
#define TQ_EXTERN_C_END_
#endif
#if defined(TQUTIL_STATIC) || defined(_WIN32)
#define TQ_BEGIN_DECLS TQ_EXTERN_C_BEGIN_
#define TQ_END_DECLS TQ_EXTERN_C_END_
#else
#define TQ_BEGIN_DECLS TQ_EXTERN_C_BEGIN_ _Pragma("GCC visibility push(default)")
#define TQ_END_DECLS _Pragma("GCC visibility pop") TQ_EXTERN_C_END_
#endif

#endif /* TQUTIL_CONFIG_H_ */
