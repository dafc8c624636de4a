#pragma once

#include "Platform/PropertyLists.h"
#include "Platform/Text.h"

#include <map>
#include <memory>
#include <optional>
#include <string>

namespace purgo {

/// The library's texts in the user's language, read from the host application's strings files:
/// those of the language over the English ones, key by key.
///
/// States:     not built -> built, on the first lookup for which the files can be read. Built is
///             final: files that change later are not read again. Until then every lookup searches
///             the disk again.
/// Ownership:  shared by the interface and the triggers.
/// Threads:    one at a time.
/// Errors:     none; a text that cannot be had says so itself.
class PGLocalizationManager {
public:
    using LocalizedStrings = std::map<std::string, platform::LocalizedText>;

    /// Reads no file yet. A language that is missing or empty stands for "English"; any other is
    /// taken as it is, as the base name of a strings file.
    explicit PGLocalizationManager(const std::optional<std::string>& language);

    const std::string& language() const { return language_; }

    /// The texts of the keys that the library uses, and of no others; null while no strings file
    /// can be read. A language other than English needs the English file beside its own.
    const LocalizedStrings* localizedStrings();

    /// The text of a key: the null marker when the key is known and in no file, absent when the key
    /// is unknown or there are no texts at all.
    platform::LocalizedText localizedStringForKey(const std::string& key);

private:
    using Dictionary = std::shared_ptr<const platform::PropertyListDictionary>;

    Dictionary firstReadableFile() const;

    std::string language_;
    std::optional<LocalizedStrings> localizedStrings_;
};

} // namespace purgo
