#pragma once

#include <AppKit/Alerts.h>
#include <AppKit/Animation.h>
#include <AppKit/Application.h>
#include <AppKit/Applications.h>
#include <AppKit/Controls.h>
#include <AppKit/Events.h>
#include <AppKit/Images.h>
#include <AppKit/Menus.h>
#include <AppKit/Popovers.h>
#include <AppKit/Screens.h>
#include <AppKit/StatusBar.h>
#include <AppKit/Text.h>
#include <AppKit/Views.h>
#include <Foundation/Foundation.h>
