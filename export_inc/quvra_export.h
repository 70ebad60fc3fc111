#ifndef QUVRA_EXPORT_H
#define QUVRA_EXPORT_H

/* Marks the functions of the flat boundary. Everything else in libquvra.so is
   hidden. Boundary functions never throw, so C++ hosts see them as noexcept. */
#define QV_API __attribute__((visibility("default")))

#ifdef __cplusplus
#define QV_NOEXCEPT noexcept
#define QV_EXTERN_C_BEGIN extern "C" {
#define QV_EXTERN_C_END }
#else
#define QV_NOEXCEPT
#define QV_EXTERN_C_BEGIN
#define QV_EXTERN_C_END
#endif

#endif
