#pragma once

// Which system version brought a declaration. One platform is named at a time here.
#define QUILLON_API_PLATFORM_macos(version) macos, introduced = version
#define API_AVAILABLE(platform) __attribute__((availability(QUILLON_API_PLATFORM_##platform)))
