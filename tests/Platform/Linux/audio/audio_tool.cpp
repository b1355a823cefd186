// Asks the sound service what it is told to, to be judged from outside. Reads commands, a line
// each, and answers each with a line of JSON:
//
//   device                     the default output device, or null
//   get DEVICE SELECTOR        the property's value, or null
//   settable DEVICE SELECTOR   whether it is, or null
//   set DEVICE SELECTOR VALUE  whether that succeeded
//   measure COUNT              microseconds of so many calls of each kind
#include "Platform/Linux/audio/PulseAudioHardware.h"

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdint>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

namespace quillon {
namespace {

using Json = nlohmann::json;

const std::map<std::string, AudioPropertyAddress> addresses{
    {"vmvc", virtualMainVolumeAddress}, {"volm", volumeScalarAddress}, {"mute", muteAddress}};

template <class Value>
Json orNull(const std::optional<Value>& value) {
    return value ? Json(*value) : Json();
}

class Tool {
  public:
    Json answer(const std::string& line) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        if (command == "device") {
            return orNull(device());
        }
        if (command == "measure") {
            int count = 0;
            words >> count;
            return measure(count);
        }
        AudioObjectId object = 0;
        std::string selector;
        words >> object >> selector;
        const auto& address = addresses.at(selector);
        if (command == "settable") {
            return orNull(audio_.isPropertySettable(object, address));
        }
        const bool isMute = selector == "mute";
        if (command == "get") {
            return isMute ? orNull(audioProperty<std::uint32_t>(audio_, object, address))
                          : orNull(audioProperty<float>(audio_, object, address));
        }
        double value = 0;
        words >> value;
        return isMute ? setAudioProperty(audio_, object, address, std::uint32_t{value != 0})
                      : setAudioProperty(audio_, object, address, static_cast<float>(value));
    }

  private:
    std::optional<AudioObjectId> device() {
        return audioProperty<AudioObjectId>(audio_, audioSystemObject, defaultOutputDeviceAddress);
    }

    Json measure(int count) {
        Json times = {{"device", Json::array()},
                      {"get", Json::array()},
                      {"settable", Json::array()},
                      {"set", Json::array()}};
        const auto measured = [&times](const char* name, const std::function<void()>& call) {
            const auto start = std::chrono::steady_clock::now();
            call();
            const std::chrono::duration<double, std::micro> taken =
                std::chrono::steady_clock::now() - start;
            times[name].push_back(taken.count());
        };
        for (int i = 0; i < count; ++i) {
            std::optional<AudioObjectId> id;
            measured("device", [&] { id = device(); });
            const auto output = id.value_or(0);
            measured("settable", [&] {
                [[maybe_unused]] const auto is =
                    audio_.isPropertySettable(output, virtualMainVolumeAddress);
            });
            measured("get", [&] {
                [[maybe_unused]] const auto volume =
                    audioProperty<float>(audio_, output, virtualMainVolumeAddress);
            });
            measured("set", [&] {
                const float volume = static_cast<float>(i % 400) * 0.0025F;
                [[maybe_unused]] const bool is =
                    setAudioProperty(audio_, output, virtualMainVolumeAddress, volume);
            });
        }
        return times;
    }

    PulseAudioHardware audio_;
};

} // namespace
} // namespace quillon

int main() {
    quillon::Tool tool;
    for (std::string line; std::getline(std::cin, line);) {
        std::cout << tool.answer(line).dump() << std::endl;
    }
}
