#ifndef OWBCTL_OUTPUT_PROGRESS_HPP
#define OWBCTL_OUTPUT_PROGRESS_HPP

#include <string>

namespace owbctl {

/** Has a terminal begin its line anew (ECMA-48). */
constexpr const char* clearLine = "\r\x1b[K";

/** A line on standard error that says how far a long command has come; nothing at all when that is no
 * terminal. Gone when the object is. */
class Progress {
public:
    Progress();
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /** Shows a printable text in place of the one before. */
    void show(const std::string& text);
    /** Makes room for other output. */
    void clear();

private:
    const bool m_isOn;
    bool m_isShown = false;
};

} // namespace owbctl
#endif
