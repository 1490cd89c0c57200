/* Preloaded into 32-bit test programs under qemu-user, never shipped.
 *
 * qemu-user runs a 32-bit program on a 64-bit kernel, which hands out 64-bit
 * directory offsets (ext4 hashes) and inode numbers. glibc's 32-bit readdir and
 * readdir_r cannot narrow them and fail with EOVERFLOW, so a library built without
 * large-file support (DirectFB's module loader, in Debian 12) sees every folder as
 * empty. A set's 32-bit kernel gives 32-bit values and needs none of this. Here both
 * read through readdir64; an offset that does not fit is cut, which only seekdir
 * would notice, and an inode number that does not fit still fails with EOVERFLOW. */
#undef _FILE_OFFSET_BITS
#define _GNU_SOURCE
#include <dirent.h>
#include <errno.h>
#include <stdint.h>
#include <string.h>
#include <sys/types.h>

static int narrow(const struct dirent64* in, struct dirent* out) {
    if ((ino_t)in->d_ino != in->d_ino) {
        return EOVERFLOW;
    }
    out->d_ino = (ino_t)in->d_ino;
    out->d_off = (off_t)(uint32_t)in->d_off;
    out->d_reclen = sizeof(*out);
    out->d_type = in->d_type;
    strncpy(out->d_name, in->d_name, sizeof(out->d_name) - 1);
    out->d_name[sizeof(out->d_name) - 1] = '\0';
    return 0;
}

struct dirent* readdir(DIR* dir) {
    static __thread struct dirent entry;
    const struct dirent64* in = readdir64(dir);
    if (in == NULL) {
        return NULL;
    }
    const int error = narrow(in, &entry);
    if (error != 0) {
        errno = error;
        return NULL;
    }
    return &entry;
}

int readdir_r(DIR* dir, struct dirent* entry, struct dirent** result) {
    const int saved = errno;
    errno = 0;
    const struct dirent64* in = readdir64(dir);
    const int error = in == NULL ? errno : narrow(in, entry);
    errno = saved;
    *result = (in != NULL && error == 0) ? entry : NULL;
    return error;
}
