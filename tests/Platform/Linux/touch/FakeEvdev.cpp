#include "FakeEvdev.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <map>

#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace quillon {

namespace {

constexpr std::array<unsigned int, 6> tools{0,
                                            BTN_TOOL_FINGER,
                                            BTN_TOOL_DOUBLETAP,
                                            BTN_TOOL_TRIPLETAP,
                                            BTN_TOOL_QUADTAP,
                                            BTN_TOOL_QUINTTAP};

std::mutex filesMutex;
std::map<int, FakeEvdev*> files; // NOLINT(bugprone-throwing-static-initialization)

void copyBits(const std::set<unsigned int>& codes, void* to, std::size_t size) {
    auto* bytes = static_cast<unsigned char*>(to);
    std::fill_n(bytes, size, 0);
    for (const unsigned int code : codes) {
        if (code / 8 < size) {
            bytes[code / 8] = static_cast<unsigned char>(bytes[code / 8] | 1U << code % 8);
        }
    }
}

} // namespace

FakeEvdev::FakeEvdev(int slots) : ids_(static_cast<std::size_t>(slots), -1) {}

FakeEvdev::~FakeEvdev() { unplug(); }

FakeEvdev* FakeEvdev::of(int fd) {
    const std::lock_guard lock(filesMutex);
    const auto found = files.find(fd);
    return found == files.end() ? nullptr : found->second;
}

FileDescriptor FakeEvdev::open() {
    const std::lock_guard lock(mutex_);
    std::array<int, 2> ends{};
    if (!isPlugged_ ||
        socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return {};
    }
    const std::lock_guard filesLock(filesMutex);
    files[ends[0]] = this;
    readers_.push_back(ends[0]);
    writers_.emplace_back(ends[1]);
    return FileDescriptor(ends[0]);
}

int FakeEvdev::timesOpened() {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(readers_.size());
}

std::vector<FakeEvdev::Event> FakeEvdev::change(const std::set<int>& slots) {
    std::vector<Event> events;
    for (int slot = 0; slot < static_cast<int>(ids_.size()); ++slot) {
        int& id = ids_[static_cast<std::size_t>(slot)];
        if ((id >= 0) == slots.contains(slot)) {
            continue;
        }
        if (std::exchange(slot_, slot) != slot) {
            events.push_back({EV_ABS, ABS_MT_SLOT, slot});
        }
        id = id < 0 ? nextId_++ : -1;
        events.push_back({EV_ABS, ABS_MT_TRACKING_ID, id});
    }
    std::set<unsigned int> keys;
    if (!slots.empty()) {
        keys = {BTN_TOUCH, tools.at(slots.size())};
    }
    for (const unsigned int key :
         {static_cast<unsigned int>(BTN_TOUCH), tools[1], tools[2], tools[3], tools[4], tools[5]}) {
        if (keys.contains(key) != keys_.contains(key)) {
            events.push_back({EV_KEY, key, keys.contains(key) ? 1 : 0});
        }
    }
    keys_ = keys;
    events.push_back({EV_SYN, SYN_REPORT, 0});
    return events;
}

void FakeEvdev::hold(const std::set<int>& slots) {
    const std::lock_guard lock(mutex_);
    send(change(slots));
}

void FakeEvdev::move(int slot) {
    const std::lock_guard lock(mutex_);
    slot_ = slot;
    send({{EV_ABS, ABS_MT_SLOT, slot}, {EV_ABS, ABS_MT_POSITION_X, 1}, {EV_SYN, SYN_REPORT, 0}});
}

void FakeEvdev::holdAndDrop(const std::set<int>& slots) {
    const std::lock_guard lock(mutex_);
    change(slots);
    send({{EV_SYN, SYN_DROPPED, 0}, {EV_SYN, SYN_REPORT, 0}});
}

void FakeEvdev::send(const std::vector<Event>& events) {
    std::vector<input_event> records;
    for (const Event& event : events) {
        input_event record{};
        record.type = static_cast<std::uint16_t>(event.type);
        record.code = static_cast<std::uint16_t>(event.code);
        record.value = event.value;
        records.push_back(record);
    }
    for (const FileDescriptor& writer : writers_) {
        [[maybe_unused]] const auto written = ::send(
            writer.get(), records.data(), records.size() * sizeof(input_event), MSG_NOSIGNAL);
    }
}

void FakeEvdev::unplug() {
    const std::lock_guard lock(mutex_);
    isPlugged_ = false;
    writers_.clear();
    const std::lock_guard filesLock(filesMutex);
    for (const int reader : readers_) {
        if (const auto file = files.find(reader); file != files.end() && file->second == this) {
            files.erase(file);
        }
    }
}

void FakeEvdev::onQuestion(std::function<void()> asked) {
    const std::lock_guard lock(mutex_);
    asked_ = std::move(asked);
}

int FakeEvdev::answer(unsigned long request, void* argument) {
    const std::lock_guard lock(mutex_);
    const auto number = static_cast<unsigned int>(_IOC_NR(request));
    const std::size_t size = _IOC_SIZE(request);
    const bool hasSlots = !ids_.empty();
    const std::set<unsigned int> axes =
        hasSlots ? std::set<unsigned int>{ABS_X, ABS_Y, ABS_MT_SLOT, ABS_MT_TRACKING_ID}
                 : std::set<unsigned int>{ABS_X, ABS_Y};
    const std::map<unsigned int, std::set<unsigned int>> codes{
        {0, {EV_SYN, EV_KEY, EV_ABS}},
        {EV_KEY, {BTN_TOUCH, tools[1], tools[2], tools[3], tools[4], tools[5]}},
        {EV_ABS, axes}};
    if (number >= 0x20 && number < 0x20 + EV_CNT) { // EVIOCGBIT
        const auto found = codes.find(number - 0x20);
        copyBits(found == codes.end() ? std::set<unsigned int>{} : found->second, argument, size);
        return static_cast<int>(size);
    }
    if (number >= 0x40 && number < 0x40 + ABS_CNT) { // EVIOCGABS
        const unsigned int axis = number - 0x40;
        input_absinfo info{};
        info.maximum = axis == ABS_MT_SLOT ? static_cast<int>(ids_.size()) - 1 : 65535;
        info.value = axis == ABS_MT_SLOT ? slot_ : 0;
        std::memcpy(argument, &info, sizeof info);
        return 0;
    }
    switch (number) {
    case 0x01: // EVIOCGVERSION
        *static_cast<int*>(argument) = EV_VERSION;
        return 0;
    case 0x02: // EVIOCGID
        std::memset(argument, 0, size);
        return 0;
    case 0x06: // EVIOCGNAME
        std::memcpy(argument, "fake", std::min<std::size_t>(size, 5));
        return 4;
    case 0x07: // EVIOCGPHYS
    case 0x08: // EVIOCGUNIQ
        return -ENOENT;
    case 0x09: // EVIOCGPROP
    case 0x19: // EVIOCGLED
    case 0x1b: // EVIOCGSW
        std::memset(argument, 0, size);
        return static_cast<int>(size);
    case 0x0a: { // EVIOCGMTSLOTS
        auto* values = static_cast<int*>(argument);
        const bool areIds = values[0] == ABS_MT_TRACKING_ID;
        for (std::size_t slot = 0; slot < ids_.size() && slot + 1 < size / sizeof(int); ++slot) {
            values[slot + 1] = areIds ? ids_[slot] : 0;
        }
        return 0;
    }
    case 0x18: // EVIOCGKEY
        if (asked_) {
            std::exchange(asked_, nullptr)();
        }
        copyBits(keys_, argument, size);
        return static_cast<int>(size);
    default:
        return -ENOTTY;
    }
}

} // namespace quillon

extern "C" int ioctl(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    quillon::FakeEvdev* device = quillon::FakeEvdev::of(fd);
    if (device == nullptr || _IOC_TYPE(request) != 'E') {
        return static_cast<int>(::syscall(SYS_ioctl, fd, request, argument));
    }
    const int answer = device->answer(request, argument);
    if (answer >= 0) {
        return answer;
    }
    errno = -answer;
    return -1;
}
