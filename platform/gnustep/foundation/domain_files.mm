#include "platform/gnustep/foundation/domain_files.h"

#include "platform/gnustep/foundation/property_lists.h"

#include <errno.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>

namespace platform {

static id propertyListIn(NSData *data)
{
    if (id list = propertyListFromBinary(data))
        return list;
    @try {
        return [NSPropertyListSerialization propertyListWithData:data
                                                         options:NSPropertyListImmutable
                                                          format:nullptr
                                                           error:nullptr];
    } @catch (NSException *) { // some data is too bad for an error
        return nil;
    }
}

NSDictionary *readDomainFile(NSString *path)
{
    const char *file = [path fileSystemRepresentation];
    struct stat there;
    if (stat(file, &there) != 0)
        return errno == ENOENT ? [NSDictionary dictionary] : nil;
    // NSData would tell why it cannot read a file, in a line of its own.
    NSData *data = S_ISREG(there.st_mode) && access(file, R_OK) == 0 ? [NSData dataWithContentsOfFile:path] : nil;
    id values = data ? propertyListIn(data) : nil;
    return [values isKindOfClass:[NSDictionary class]] ? values : nil;
}

// 0 also where there is no file yet. Only root can leave another user's file that user's.
static int whyNotReplaceable(const char *path, struct stat &there)
{
    there = {};
    there.st_uid = geteuid();
    if (stat(path, &there) != 0)
        return errno == ENOENT ? 0 : errno;
    if (!S_ISREG(there.st_mode))
        return S_ISDIR(there.st_mode) ? EISDIR : EINVAL;
    return there.st_uid == geteuid() || geteuid() == 0 ? 0 : EPERM;
}

static bool writeAll(int file, const char *bytes, size_t length)
{
    while (length > 0) {
        ssize_t written = write(file, bytes, length);
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0) {
            bytes += written;
            length -= size_t(written);
        }
    }
    return fsync(file) == 0; // disks over a network say only now that they are full
}

static int replaceFile(const char *path, uid_t owner, gid_t group, NSData *data)
{
    char *target = realpath(path, nullptr); // a link stays one
    std::string file = target ? target : path;
    free(target);

    std::string temporary = file + "-XXXXXX";
    int descriptor = mkstemp(temporary.data());
    if (descriptor < 0)
        return errno;
    bool isDone = (owner == geteuid() || fchown(descriptor, owner, group) == 0) &&
                  writeAll(descriptor, static_cast<const char *>([data bytes]), [data length]);
    int error = isDone ? 0 : errno;
    if (close(descriptor) != 0 && !error)
        error = errno;
    if (!error && rename(temporary.c_str(), file.c_str()) != 0)
        error = errno;
    if (error)
        unlink(temporary.c_str());
    return error;
}

int writeDomainFile(NSDictionary *values, NSString *path)
{
    const char *file = [path fileSystemRepresentation];
    struct stat there;
    if (int error = whyNotReplaceable(file, there))
        return error;
    if ([values count] == 0)
        return unlink(file) == 0 || errno == ENOENT ? 0 : errno;
    NSData *data = binaryPropertyList(values);
    return data ? replaceFile(file, there.st_uid, there.st_gid, data) : EINVAL;
}

NSString *nameToKeepDomainFile(NSString *path)
{
    struct stat there;
    if (whyNotReplaceable([path fileSystemRepresentation], there))
        return nil;
    // Not another property list, which would be another domain.
    NSString *name = [path stringByAppendingString:@".unreadable"];
    for (int i = 2; access([name fileSystemRepresentation], F_OK) == 0; i++)
        name = [path stringByAppendingFormat:@".unreadable-%d", i];
    return name;
}

int keepDomainFile(NSString *path)
{
    const char *file = [path fileSystemRepresentation];
    struct stat there;
    if (int error = whyNotReplaceable(file, there))
        return error;
    return rename(file, [nameToKeepDomainFile(path) fileSystemRepresentation]) == 0 ? 0 : errno;
}

} // namespace platform
