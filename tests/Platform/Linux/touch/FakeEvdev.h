#pragma once

#include "Platform/Posix/files/FileDescriptor.h"

#include <functional>
#include <mutex>
#include <set>
#include <utility>
#include <vector>

#include <linux/input.h>

namespace quillon {

/// A touchpad in the shape that the kernel shows it in: a file of events that answers questions
/// (ioctl). Linking FakeEvdev.cpp puts it in front of the C library's function. Any thread.
class FakeEvdev {
  public:
    struct Event {
        unsigned int type, code;
        int value;
    };

    /// Without slots it knows only how many fingers there are, by its keys.
    explicit FakeEvdev(int slots);
    FakeEvdev(const FakeEvdev&) = delete;
    FakeEvdev& operator=(const FakeEvdev&) = delete;
    ~FakeEvdev();

    /// A file of it, as one that opens it gets it. Not open once it is unplugged.
    [[nodiscard]] FileDescriptor open();

    [[nodiscard]] int timesOpened();

    /// Fingers in these slots and no others; in one frame, with their keys.
    void hold(const std::set<int>& slots);

    /// The finger in this slot, which was not spoken of last.
    void move(int slot);

    /// As hold(), but nobody is told: what was sent is lost, and readers are told that much.
    void holdAndDrop(const std::set<int>& slots);

    /// What was sent and not read is lost, too.
    void unplug();

    /// Called once, when somebody asks next for the state of its keys. At first that is before he
    /// asks for that of its slots, later between what is in them and which one was spoken of last.
    void onQuestion(std::function<void()> asked);

    /// How it answers; negative for what it does not know.
    int answer(unsigned long request, void* argument);

    /// The one that a file belongs to; null for other files.
    static FakeEvdev* of(int fd);

  private:
    std::vector<Event> change(const std::set<int>& slots);
    void send(const std::vector<Event>& events);

    std::recursive_mutex mutex_;
    std::vector<int> ids_; // by slot
    std::set<unsigned int> keys_;
    int slot_ = 0;
    int nextId_ = 1;
    std::vector<FileDescriptor> writers_; // one for each that has it open
    std::vector<int> readers_;            // all that ever were
    bool isPlugged_ = true;
    std::function<void()> asked_;
};

} // namespace quillon
