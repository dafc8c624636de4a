#include "Source/Model/PGIdentifiers.h"

const char* const kPGFlipswitchDylibPath =
    "/Library/MobileSubstrate/DynamicLibraries/Flipswitch.dylib";
const char* const kPGFSSwitchPluginIdentifier = "com.norvane.purgo.flipswitch";
const char* const kPGFSSwitchClean = "com.norvane.purgo.flipswitch.clean";
const char* const kPGFSSwitchCleanNoPopup = "com.norvane.purgo.flipswitch.cleannopopup";

const char* const kActivatorDylibPath = "/Library/MobileSubstrate/DynamicLibraries/Activator.dylib";
const char* const kPGLAListenerPluginIdentifier = "com.norvane.purgo.activator";
const char* const kPGLAListenerClean = "com.norvane.purgo.activator.clean";
const char* const kPGLAListenerCleanNoPopup = "com.norvane.purgo.activator.cleannopopup";
