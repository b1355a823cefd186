#pragma once

#include <CoreAudio/CoreAudio.h>

enum : AudioObjectPropertySelector {
    kAudioHardwareServiceDeviceProperty_VirtualMainVolume = 'vmvc',
};
