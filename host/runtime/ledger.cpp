#include "host/runtime/ledger.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <new>
#include <unordered_map>
#include <utility>

#include "host/host.h"
#include "host/runtime/handle.h"

namespace host {

std::string HandleInfo::text() const
{
    std::string locksText = std::to_string(locks) + (locks == 1 ? " lock, " : " locks, ");
    return "#" + std::to_string(serial) + " " + what + ": " + locksText + std::to_string(heldByHost) + " of the host";
}

namespace runtime {

namespace {

struct Epitaph {
    HandleKind kind;
    uint64_t serial;
};

constexpr size_t kGravesKept = 2048;
constexpr unsigned char kDeadPattern = 0xDD;

struct Book {
    std::unordered_map<const void *, Handle *> live;
    std::deque<void *> dead; // in the order of death
    std::unordered_map<const void *, Epitaph> epitaphs;
    std::vector<std::string> faults;
    uint64_t lastSerial = 0;
};

// Never destroyed: handles may die while the process ends.
Book &book()
{
    static Book *book = new Book;
    return *book;
}

HandleInfo infoOf(const Handle &handle)
{
    return {handle.record, handle.kind, handle.what(), handle.locks, handle.held, handle.serial};
}

const char *kindName(HandleKind kind)
{
    switch (kind) {
    case HandleKind::Object:
        return "object";
    case HandleKind::String:
        return "string";
    case HandleKind::Array:
        return "array";
    case HandleKind::StringData:
        return "string data";
    }
    return "handle";
}

void die(Handle &handle)
{
    handle.dying = true;
    std::unique_ptr<Handle> owner(&handle); // it goes even when the finaliser throws past the host
    handle.finalise();
    if (handle.locks != 0)
        noteFault("left locked while it was being destroyed: " + handle.what());
}

// Records of dead handles are filled with a pattern and kept for a while, so that a late use is seen for what it is and
// not taken for a younger handle at the same address.
void bury(const Handle &handle)
{
    memset(handle.record, kDeadPattern, handle.recordSize);
    Book &b = book();
    b.dead.push_back(handle.record);
    b.epitaphs[handle.record] = {handle.kind, handle.serial};
    if (b.dead.size() <= kGravesKept)
        return;
    void *oldest = b.dead.front();
    b.epitaphs.erase(oldest);
    free(oldest);
    b.dead.pop_front();
}

} // namespace

Handle::Handle(HandleKind kind, size_t recordSize)
    : record(calloc(1, recordSize)), recordSize(recordSize), kind(kind), serial(++book().lastSerial)
{
    if (!record)
        throw std::bad_alloc();
    book().live.emplace(record, this);
}

Handle::~Handle()
{
    book().live.erase(record);
    if (record)
        bury(*this);
}

void lock(Handle &handle)
{
    ++handle.locks;
}

void unlock(Handle &handle)
{
    if (handle.locks <= handle.held) {
        noteFault("unlocked once too often: " + handle.what());
        return;
    }
    if (--handle.locks == 0 && !handle.dying)
        die(handle);
}

void hold(Handle &handle)
{
    ++handle.locks;
    ++handle.held;
}

void unhold(Handle &handle)
{
    --handle.held;
    if (--handle.locks == 0 && !handle.dying)
        die(handle);
}

void takeOver(Handle &handle)
{
    if (handle.locks <= handle.held) {
        noteFault("handed to the host without a lock: " + handle.what());
        ++handle.locks;
    }
    ++handle.held;
}

Handle *find(const void *record)
{
    auto entry = book().live.find(record);
    return entry == book().live.end() ? nullptr : entry->second;
}

Handle *expect(const void *record, HandleKind kind, const char *user)
{
    if (!record)
        return nullptr;
    Handle *handle = find(record);
    if (!handle) {
        std::optional<std::string> dead = epitaph(record);
        noteFault(std::string(user) + ": was given " + (dead ? "a dead handle (" + *dead + ")" : "no handle at all"));
        return nullptr;
    }
    if (handle->kind != kind) {
        noteFault(std::string(user) + ": was given " + handle->what() + " in place of a handle of kind " +
                  kindName(kind));
        return nullptr;
    }
    return handle;
}

void noteFault(const std::string &fault)
{
    book().faults.push_back(fault);
}

std::optional<std::string> epitaph(const void *record)
{
    auto entry = book().epitaphs.find(record);
    if (entry == book().epitaphs.end())
        return std::nullopt;
    return std::string(kindName(entry->second.kind)) + " #" + std::to_string(entry->second.serial);
}

} // namespace runtime

using namespace runtime;

std::vector<HandleInfo> Host::liveHandles() const
{
    std::vector<const Handle *> live; // describing one may make others for a moment
    for (const auto &entry : book().live)
        live.push_back(entry.second);
    std::sort(live.begin(), live.end(), [](const Handle *a, const Handle *b) { return a->serial < b->serial; });

    std::vector<HandleInfo> handles;
    for (const Handle *handle : live)
        handles.push_back(infoOf(*handle));
    return handles;
}

std::optional<HandleInfo> Host::handleInfo(const void *record) const
{
    Handle *handle = find(record);
    return handle ? std::optional(infoOf(*handle)) : std::nullopt;
}

std::vector<HandleInfo> Host::imbalances() const
{
    return leaks(LedgerMark());
}

LedgerMark Host::mark() const
{
    LedgerMark mark;
    mark.serial = book().lastSerial;
    for (const auto &entry : book().live)
        if (entry.second->locks != entry.second->held)
            mark.heldElsewhere.emplace_back(entry.first, entry.second->locks - entry.second->held);
    return mark;
}

std::vector<HandleInfo> Host::leaks(const LedgerMark &since) const
{
    std::map<const void *, int32_t> before(since.heldElsewhere.begin(), since.heldElsewhere.end());
    std::vector<HandleInfo> leaked;
    for (HandleInfo &info : liveHandles()) {
        auto known = before.find(info.handle);
        // A handle at the address of one that died since is a new one.
        bool isOld = known != before.end() && info.serial <= since.serial;
        if (info.heldElsewhere() != (isOld ? known->second : 0))
            leaked.push_back(std::move(info));
    }
    return leaked;
}

std::vector<HandleInfo> Host::liveSince(const LedgerMark &since) const
{
    std::vector<HandleInfo> young;
    for (HandleInfo &info : liveHandles())
        if (info.serial > since.serial)
            young.push_back(std::move(info));
    return young;
}

const std::vector<std::string> &Host::faults() const
{
    return book().faults;
}

std::vector<std::string> Host::takeFaults()
{
    return std::exchange(book().faults, {});
}

} // namespace host
