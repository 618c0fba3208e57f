#ifndef OWBCTL_FORMATS_STYLE_HPP
#define OWBCTL_FORMATS_STYLE_HPP

namespace owbctl {

/** How tables show groups. */
struct Style {
    /** Everything in full: also keys that are the same in every row, complete object paths, no cut texts. */
    bool isWide = false;
    /** Values are the item texts, not cut. */
    bool isRaw = false;
    /** Sizes and speeds of 10,000 and more have a larger unit, as 1 Gbit/s. */
    bool isHuman = false;
};

} // namespace owbctl
#endif
