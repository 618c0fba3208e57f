#ifndef OW_URL_HPP_INCLUDED
#define OW_URL_HPP_INCLUDED
#include "OW_Exception.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

/** A text is not a URL of an object manager. */
OW_DECLARE_EXCEPTION(MalformedURL)

/**
 * The parts of the URL of an object manager,
 * `[scheme://][principal[:credential]@]host[:port][/namespace[/:modelpath]]`, not percent-decoded. The
 * constructor throws MalformedURLException if the host is missing, contains blanks or control characters, or
 * has unbalanced brackets.
 */
struct OW_COMMON_API URL {
    explicit URL(const String& given);

    /** The whole URL, without surrounding white space. */
    String text;
    /** In lower case; "http" by default. */
    String scheme;
    String principal;
    String credential;
    /** A name, an IPv4 address, or an IPv6 address including its brackets. */
    String host;
    /** Decimal number, "owipc", or the percent-encoded path of a Unix-domain socket. */
    String port;
    String nameSpace;
    String modelPath;
};

} // namespace OpenWBEM
#endif
