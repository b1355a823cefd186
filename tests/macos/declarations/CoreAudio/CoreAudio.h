#pragma once

#include <CoreFoundation/CoreFoundation.h>

using AudioObjectID = UInt32;
using AudioObjectPropertySelector = UInt32;
using AudioObjectPropertyScope = UInt32;
using AudioObjectPropertyElement = UInt32;

struct AudioObjectPropertyAddress {
    AudioObjectPropertySelector mSelector;
    AudioObjectPropertyScope mScope;
    AudioObjectPropertyElement mElement;
};

enum : AudioObjectID { kAudioObjectSystemObject = 1 };
enum : AudioObjectPropertySelector {
    kAudioHardwarePropertyDefaultOutputDevice = 'dOut',
    kAudioDevicePropertyVolumeScalar = 'volm',
    kAudioDevicePropertyMute = 'mute',
};
enum : AudioObjectPropertyScope {
    kAudioObjectPropertyScopeGlobal = 'glob',
    kAudioObjectPropertyScopeOutput = 'outp',
};
enum : AudioObjectPropertyElement { kAudioObjectPropertyElementMain = 0 };

enum : OSStatus {
    kAudioHardwareNoError = 0,
    kAudioHardwareUnspecifiedError = 'what',
    kAudioHardwareUnknownPropertyError = 'who?',
    kAudioHardwareBadPropertySizeError = '!siz',
    kAudioHardwareBadObjectError = '!obj',
};

/// `dataSize`: how much there is room for; then, how much was written.
CF_EXPORT OSStatus AudioObjectGetPropertyData(AudioObjectID object,
                                              const AudioObjectPropertyAddress* address,
                                              UInt32 qualifierDataSize, const void* qualifierData,
                                              UInt32* dataSize, void* data);
CF_EXPORT OSStatus AudioObjectIsPropertySettable(AudioObjectID object,
                                                 const AudioObjectPropertyAddress* address,
                                                 Boolean* isSettable);
CF_EXPORT OSStatus AudioObjectSetPropertyData(AudioObjectID object,
                                              const AudioObjectPropertyAddress* address,
                                              UInt32 qualifierDataSize, const void* qualifierData,
                                              UInt32 dataSize, const void* data);
