// The Carbon File Manager's records, packed as it packs them, and its two calls that the plug-in makes.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

CF_EXTERN_C_BEGIN

typedef UInt32 FSCatalogInfoBitmap;

#pragma pack(push, 2)

typedef struct FSRef {
    UInt8 hidden[80];
} FSRef;

typedef struct FSSpec {
    SInt16 vRefNum;
    SInt32 parID;
    StrFileName name;
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
    SInt16 volume;
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

enum {
    kFSCatInfoNone = 0x00000000,
    kFSCatInfoNodeID = 0x00000010,
};

OSErr FSGetCatalogInfo(const FSRef *ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo *catalogInfo,
                       HFSUniStr255 *outName, FSSpecPtr fsSpec, FSRef *parentRef);
OSErr FSpMakeFSRef(const FSSpec *source, FSRef *newRef);

CF_EXTERN_C_END

#ifdef __cplusplus
static_assert(sizeof(FSRef) == 80 && sizeof(FSSpec) == 70 && sizeof(HFSUniStr255) == 512 &&
                  sizeof(FSCatalogInfo) == 144,
              "records of the File Manager");
#endif
