// The Carbon File Manager: the types as macOS lays them out, and the calls with which files are named.
#pragma once

#include <CoreFoundation/CFBase.h>

CF_EXTERN_C_BEGIN

enum {
    nsvErr = -35,
    bdNamErr = -37,
    fnfErr = -43,
    paramErr = -50,
    dirNFErr = -120,
    errFSNameTooLong = -1405,
    pathTooLongErr = -2110
};

enum {
    fsRtParID = 1, // the directory id of a volume's parent, in an FSSpec that names the volume itself
    fsRtDirID = 2  // the node id of a volume's root folder
};

typedef SInt16 FSVolumeRefNum;
typedef UInt32 FSCatalogInfoBitmap;

#pragma pack(push, 2)

typedef struct FSRef {
    UInt8 hidden[80];
} FSRef;

typedef struct FSSpec {
    FSVolumeRefNum vRefNum;
    SInt32 parID;
    StrFileName name; // MacRoman
} FSSpec;
typedef FSSpec *FSSpecPtr;

typedef struct HFSUniStr255 {
    UInt16 length;
    UniChar unicode[255];
} HFSUniStr255;

typedef struct UTCDateTime {
    UInt16 highSeconds;
    UInt32 lowSeconds;
    UInt16 fraction;
} UTCDateTime;

typedef struct FSCatalogInfo {
    UInt16 nodeFlags;
    FSVolumeRefNum volume;
    UInt32 parentDirID;
    UInt32 nodeID;
    UInt8 sharingFlags;
    UInt8 userPrivileges;
    UInt8 reserved1;
    UInt8 reserved2;
    UTCDateTime createDate;
    UTCDateTime contentModDate;
    UTCDateTime attributeModDate;
    UTCDateTime accessDate;
    UTCDateTime backupDate;
    UInt32 permissions[4];
    UInt8 finderInfo[16];
    UInt8 extFinderInfo[16];
    UInt64 dataLogicalSize;
    UInt64 dataPhysicalSize;
    UInt64 rsrcLogicalSize;
    UInt64 rsrcPhysicalSize;
    UInt32 valence;
    TextEncoding textEncodingHint;
} FSCatalogInfo;

#pragma pack(pop)

// The fields that FSGetCatalogInfo fills on GNUstep; it leaves all others alone there.
enum {
    kFSCatInfoNone = 0x00000000,
    kFSCatInfoNodeFlags = 0x00000002,
    kFSCatInfoVolume = 0x00000004,
    kFSCatInfoParentDirID = 0x00000008,
    kFSCatInfoNodeID = 0x00000010
};

enum { kFSNodeIsDirectoryMask = 0x0010 };

// Each result pointer may be null. The name comes back in form D; parentRef is all zero for a volume's root.
OSErr FSGetCatalogInfo(const FSRef *ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo *catalogInfo,
                       HFSUniStr255 *outName, FSSpecPtr fsSpec, FSRef *parentRef);

// These make references to items that exist, and give fnfErr for others. A name is found in whichever normal form
// the disk holds it.
OSErr FSMakeFSRefUnicode(const FSRef *parentRef, UniCharCount nameLength, const UniChar *name,
                         TextEncoding textEncodingHint, FSRef *newRef);
OSErr FSpMakeFSRef(const FSSpec *source, FSRef *newRef); // an empty name means the folder parID itself

enum { kFSPathMakeRefDefaultOptions = 0, kFSPathMakeRefDoNotFollowLeafSymlink = 0x01 };

// Paths are UTF-8. The default options follow a symbolic link at the end of the path.
OSStatus FSPathMakeRef(const UInt8 *path, FSRef *ref, Boolean *isDirectory);
OSStatus FSPathMakeRefWithOptions(const UInt8 *path, UInt32 options, FSRef *ref, Boolean *isDirectory);
OSStatus FSRefMakePath(const FSRef *ref, UInt8 *path, UInt32 maxPathSize);

CF_EXTERN_C_END

#ifdef __cplusplus
static_assert(sizeof(FSRef) == 80 && sizeof(FSSpec) == 70 && sizeof(HFSUniStr255) == 512 &&
                  sizeof(FSCatalogInfo) == 144,
              "records of the File Manager");
#endif
