#ifndef OW_URL_HPP_INCLUDED
#define OW_URL_HPP_INCLUDED
#include "OW_Exception.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

/** A text is not a URL of an object manager. */
OW_DECLARE_EXCEPTION(MalformedURL)

/**
 * URL of an object manager, `[scheme://][principal[:credential]@]host[:port][/namespace[/:modelpath]]`, in
 * its parts. Nothing is percent-decoded. Throws MalformedURLException when the host is missing, holds blanks
 * or control characters, or opens a bracket that does not end it.
 */
struct OW_COMMON_API URL {
    explicit URL(const String& given);

    /** The whole, without blanks at its ends. */
    String text;
    /** Lower case; "http" when the text has none. */
    String scheme;
    String principal;
    String credential;
    /** A name, an IPv4 address, or an IPv6 address in brackets, which belong to it. */
    String host;
    /** Decimal number, "owipc", or the percent-encoded path of a Unix-domain socket. */
    String port;
    String nameSpace;
    String modelPath;
};

} // namespace OpenWBEM
#endif
