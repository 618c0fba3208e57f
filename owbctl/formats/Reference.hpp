#ifndef OWBCTL_FORMATS_REFERENCE_HPP
#define OWBCTL_FORMATS_REFERENCE_HPP

#include <optional>
#include <string>
#include <vector>

namespace owbctl {

/** The object paths of one column, in short. */
struct ShortReferences {
    /** The key whose values the texts are; empty if they have several keys. */
    std::string key;
    /** One for each path: the value of the key, or Key="value",... of several. */
    std::vector<std::string> texts;
};

/**
 * Shortens object paths to the keys that differ between them. If none differs, keeps all keys but those that
 * name a class. Nothing if one of the paths has another form, or if they are of several classes.
 */
std::optional<ShortReferences> shortened(const std::vector<std::string>& paths);

} // namespace owbctl
#endif
