// The file of one domain: a property list, read and replaced as a whole.
#pragma once

#import <Foundation/Foundation.h>

namespace platform {

// Immutable and autoreleased; empty when there is no file, nil when what is there cannot be read or is no dictionary.
NSDictionary *readDomainFile(NSString *path);

// Puts a binary property list in the file's place, in one step: after a failure the file is as it was. No values take
// the file away. A file stays its owner's, and what is no file stays where it is. Answers 0, or the number of the
// system's error.
int writeDomainFile(NSDictionary *values, NSString *path);

// What keepDomainFile would name the file now, autoreleased; nil when the file is another user's or none at all.
NSString *nameToKeepDomainFile(NSString *path);

// Renames a file that cannot be read, so that another one can take its place. Answers as writeDomainFile does.
int keepDomainFile(NSString *path);

} // namespace platform
