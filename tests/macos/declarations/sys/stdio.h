#pragma once

#define RENAME_EXCL 0x00000004

#ifdef __cplusplus
extern "C" {
#endif

int renameatx_np(int fromfd, const char* from, int tofd, const char* to, unsigned int flags);

#ifdef __cplusplus
}
#endif
