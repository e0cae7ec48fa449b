/* A password file of a test's own: when PLATFORM_TEST_PASSWD names a file in the form of /etc/passwd, its users are the
   only ones there are. The library must come before the C library, linked first or preloaded. */

#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <pwd.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

/* Like getpwnam_r for a name, like getpwuid_r without one. */
static int find(const char *path, const char *name, uid_t uid, struct passwd *entry, char *buffer, size_t size,
                struct passwd **result)
{
    FILE *file = fopen(path, "re");
    *result = NULL;
    if (!file)
        return errno;
    int error;
    while ((error = fgetpwent_r(file, entry, buffer, size, result)) == 0)
        if (name ? strcmp(entry->pw_name, name) == 0 : entry->pw_uid == uid)
            break;
    fclose(file);
    if (error)
        *result = NULL;
    return error == ENOENT ? 0 : error;
}

int getpwnam_r(const char *name, struct passwd *entry, char *buffer, size_t size, struct passwd **result)
{
    const char *path = getenv("PLATFORM_TEST_PASSWD");
    if (path)
        return find(path, name, 0, entry, buffer, size, result);
    int (*real)(const char *, struct passwd *, char *, size_t, struct passwd **) = dlsym(RTLD_NEXT, "getpwnam_r");
    return real(name, entry, buffer, size, result);
}

int getpwuid_r(uid_t uid, struct passwd *entry, char *buffer, size_t size, struct passwd **result)
{
    const char *path = getenv("PLATFORM_TEST_PASSWD");
    if (path)
        return find(path, NULL, uid, entry, buffer, size, result);
    int (*real)(uid_t, struct passwd *, char *, size_t, struct passwd **) = dlsym(RTLD_NEXT, "getpwuid_r");
    return real(uid, entry, buffer, size, result);
}
