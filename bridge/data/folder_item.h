// Files between the host's FolderItem and a file URL, through the File Manager's references. A file that
// does not exist yet is told by its parent folder and its name, which is normalised to form D (decomposed),
// the form of names on disk, and otherwise crosses as it is: a ":" of a URL, which the File Manager calls "/", is
// not exchanged for it, nor the other way round. Neither direction raises anything.
#pragma once

#include "hostapi/types.h"

#include <Foundation/Foundation.h>

class HeldHandles;

// A new FolderItem, held. Null for nil, for a URL whose parent folder does not exist, and
// when the host cannot make one. A name of more than 255 UTF-16 units is cut to 255.
REALfolderItem NSURLRBFile(NSURL *url, HeldHandles &held);

// A file URL, autoreleased. Nil for null and for an item that the host can express in no way.
NSURL *NewNSURLfile(REALfolderItem item);
