// What the plug-in asks the File Manager about a file, and what it does when one of the answers is an error. The File
// Manager's functions in this program come before the platform's, and pass on what no test spoils.
#include "tests/bridge/crossing.h"
#include "tests/support/next_function.h"

#include <CoreServices/CoreServices.h>

using host::Value;

namespace {

bool isWatched;
std::vector<std::string> questions;
std::string failing; // the question whose answer is an error

bool fails(const std::string &question)
{
    if (isWatched)
        questions.push_back(question);
    return isWatched && question == failing;
}

bool namesNothing(const FSRef *ref)
{
    const FSRef cleared = {};
    return memcmp(ref, &cleared, sizeof cleared) == 0;
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) OSErr FSGetCatalogInfo(const FSRef *ref, FSCatalogInfoBitmap whichInfo,
                                                              FSCatalogInfo *info, HFSUniStr255 *name, FSSpec *spec,
                                                              FSRef *parent)
{
    const char *question = whichInfo == kFSCatInfoNodeID ? "node"
                           : name                        ? "name"
                           : spec                        ? "FSSpec"
                           : namesNothing(ref)           ? "nothing"
                                                         : "parent";
    if (fails(question))
        return paramErr;
    const OSErr error =
        nextFunction<decltype(FSGetCatalogInfo)>("FSGetCatalogInfo")(ref, whichInfo, info, name, spec, parent);
    if (isWatched && parent && namesNothing(parent))
        *parent = *ref; // a File Manager that names something as a root's parent
    return error;
}

__attribute__((visibility("default"))) OSErr FSpMakeFSRef(const FSSpec *spec, FSRef *ref)
{
    const OSErr error = nextFunction<decltype(FSpMakeFSRef)>("FSpMakeFSRef")(spec, ref);
    return fails("reference") ? OSErr(paramErr) : error;
}
}

namespace {

// What the plug-in had the host make.
std::string made;

void *itemOfParent(const FSRef *, const HFSUniStr255 *)
{
    made = "of its parent and name";
    return nullptr;
}

void *itemOfSpec(const FSSpec *)
{
    made = "of its FSSpec";
    return nullptr;
}

class FileManagerFailures : public CrossingTest {
protected:
    void SetUp() override
    {
        start();
        host.replace("REALFolderItemFromParentFSRef", reinterpret_cast<void *>(itemOfParent));
        host.replace("FolderItemFromFSSpec", reinterpret_cast<void *>(itemOfSpec));
        carrier();
    }

    // How the item of an existing folder is made while the answer to a question is an error.
    std::string madeWithout(const std::string &question, NSString *path = @"/tmp")
    {
        NSURL *url = [NSURL fileURLWithPath:path];
        failing = question;
        questions.clear();
        made = "nothing";
        isWatched = true;
        toHostWith("fileForKey", url);
        isWatched = false;
        return made;
    }
};

} // namespace

TEST_F(FileManagerFailures, AnExistingFileIsAskedForItsNodeItsNameAndItsParent)
{
    EXPECT_EQ(madeWithout(""), "of its parent and name");
    EXPECT_EQ(questions, (std::vector<std::string>{"node", "name", "parent"}));
}

TEST_F(FileManagerFailures, TheRootOfAVolumeHasNoParent)
{
    EXPECT_EQ(madeWithout("", @"/"), "of its FSSpec");
    EXPECT_EQ(questions, (std::vector<std::string>{"node", "name", "nothing", "FSSpec"}));
}

TEST_F(FileManagerFailures, AFileThatCannotBeToldByParentAndNameIsToldByItsSpecification)
{
    for (const char *question : {"node", "name", "parent"})
        EXPECT_EQ(madeWithout(question), "of its FSSpec") << "without its " << question;
}

TEST_F(FileManagerFailures, AFileWithoutASpecificationEitherIsNil)
{
    EXPECT_EQ(madeWithout("FSSpec", @"/"), "nothing");
}

TEST_F(FileManagerFailures, ASpecificationThatHasNoReferenceIsNoFile)
{
    host.replace("REALFSRefFromFolderItem", bodyOf([](void *, void *, void *) -> unsigned char { return 0; }));
    Value item = Value::folderItem("/tmp");
    const id url = toCocoaWith("setFileValue", item);
    EXPECT_TRUE([[url path] isEqual:@"/tmp"]) << textOf(url);
    failing = "reference";
    isWatched = true;
    EXPECT_EQ(toCocoaWith("setFileValue", item), nil);
    isWatched = false;
    host.replace("REALFSRefFromFolderItem", nullptr);
}
