#ifndef HTTP_COUNTERS_HPP_INCLUDED
#define HTTP_COUNTERS_HPP_INCLUDED

namespace cimom {

/** What the sessions of an object manager have done since its start. */
struct Counters {
    unsigned long connections = 0;
    /** Requests that have been carried out. */
    unsigned long requests = 0;
    /** Those of them whose operation has failed. */
    unsigned long failed = 0;
    /** Error responses of HTTP, other than to an idle connection. */
    unsigned long refused = 0;
};

} // namespace cimom
#endif
