// Says which mutex guards which member, for clang's thread-safety analysis; nothing under other compilers.

#pragma once

#if defined(__clang__)
#define DU_GUARDED_BY(mutex) __attribute__((guarded_by(mutex)))
#define DU_REQUIRES(mutex) __attribute__((requires_capability(mutex)))
#else
#define DU_GUARDED_BY(mutex)
#define DU_REQUIRES(mutex)
#endif
