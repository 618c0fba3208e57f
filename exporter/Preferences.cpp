#include "exporter/Preferences.hpp"

#include "util/Ascii.hpp"
#include "util/Number.hpp"

#include <algorithm>
#include <cstddef>

namespace exporter {
namespace {

/** Removes the part of a list before a separator, and the separator. Returns the part without white space. A
 * separator in quotation marks separates nothing. */
std::string_view takePart(std::string_view& list, char separator) {
    bool isQuoted = false;
    std::size_t end = 0;
    for (; end < list.size() && (isQuoted || list[end] != separator); ++end) {
        if (isQuoted && list[end] == '\\' && end + 1 < list.size())
            ++end;
        else if (list[end] == '"')
            isQuoted = !isQuoted;
    }
    const std::string_view part = list.substr(0, end);
    list.remove_prefix(std::min(end + 1, list.size()));
    return ascii::trim(part);
}

/** An element of a list: `text/plain;version=0.0.4;q=0.5`. */
struct Range {
    std::string_view name;
    /** Empty if it has none. */
    std::string_view version;
    /** From 0, not acceptable, to 1. */
    double quality;
};

/** The weight of an element. An invalid one counts as 0, as if the element were missing. */
double qualityOf(std::string_view text) {
    const bool hasForm =
        !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789.") == text.npos;
    const double quality = hasForm ? util::realNumber(text).value_or(0) : 0;
    return quality <= 1 ? quality : 0;
}

Range rangeOf(std::string_view element) {
    Range range{takePart(element, ';'), {}, 1};
    while (!element.empty()) {
        std::string_view value = takePart(element, ';');
        const std::string_view name = takePart(value, '=');
        if (ascii::equalsIgnoreCase(name, "q"))
            range.quality = qualityOf(ascii::trim(value));
        else if (ascii::equalsIgnoreCase(name, "version"))
            range.version = ascii::trim(value);
    }
    return range;
}

/** How much a client wants something, and by which element it said so. */
struct Preference {
    /** 0: it has not named it. A higher rank is a more specific element. */
    int rank = 0;
    double quality = 0;
};

/** @param rankOf the rank of an element for the thing; 0 if the element does not match it */
template <class RankOf>
Preference preferenceIn(std::string_view list, RankOf rankOf) {
    Preference best;
    while (!list.empty()) {
        const Range range = rangeOf(takePart(list, ','));
        const int rank = rankOf(range);
        if (rank > best.rank || (rank == best.rank && rank > 0 && range.quality > best.quality))
            best = {rank, range.quality};
    }
    return best;
}

bool isNamed(std::string_view name, std::string_view expected) {
    return ascii::equalsIgnoreCase(name, expected);
}

} // namespace

metrics::Format preferredFormat(std::string_view accept) {
    const Preference openMetrics = preferenceIn(accept, [](const Range& range) {
        const bool isOurs = range.version.empty() || range.version == "1.0.0";
        return isNamed(range.name, "application/openmetrics-text") && isOurs ? 1 : 0;
    });
    const Preference text = preferenceIn(accept, [](const Range& range) {
        if (isNamed(range.name, "text/plain"))
            return range.version.empty() || range.version == "0.0.4" ? 3 : 0;
        return isNamed(range.name, "text/*") ? 2 : range.name == "*/*" ? 1 : 0;
    });
    return openMetrics.quality > 0 && openMetrics.quality >= text.quality ? metrics::Format::openMetrics
                                                                          : metrics::Format::text;
}

bool acceptsGzip(std::string_view acceptEncoding) {
    return preferenceIn(acceptEncoding, [](const Range& range) {
               return isNamed(range.name, "gzip") || isNamed(range.name, "x-gzip") ? 2
                      : range.name == "*"                                          ? 1
                                                                                   : 0;
           }).quality > 0;
}

} // namespace exporter
