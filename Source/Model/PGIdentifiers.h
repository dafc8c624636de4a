#pragma once

// The names under which the outside world knows the library. Exported, so that other code may link
// against them: each is a pointer-sized global that refers to a constant text.
extern "C" {

/// Where the toggle framework lies.
[[gnu::visibility("default")]] extern const char* const kPGFlipswitchDylibPath;
/// The toggle plugin: the unit of enabling, and what the host application is told of a cleanup.
[[gnu::visibility("default")]] extern const char* const kPGFSSwitchPluginIdentifier;
/// The switch that asks before it cleans.
[[gnu::visibility("default")]] extern const char* const kPGFSSwitchClean;
/// The switch that cleans at once.
[[gnu::visibility("default")]] extern const char* const kPGFSSwitchCleanNoPopup;

/// Where the event framework lies.
[[gnu::visibility("default")]] extern const char* const kActivatorDylibPath;
/// The event plugin: the unit of enabling, and what the host application is told of a cleanup.
[[gnu::visibility("default")]] extern const char* const kPGLAListenerPluginIdentifier;
/// The listener that asks before it cleans.
[[gnu::visibility("default")]] extern const char* const kPGLAListenerClean;
/// The listener that cleans at once.
[[gnu::visibility("default")]] extern const char* const kPGLAListenerCleanNoPopup;

} // extern "C"
