#ifndef TESTS_SUPPORT_WIRE_HPP
#define TESTS_SUPPORT_WIRE_HPP
#include <string>
#include <vector>

/**
 * Builds the bytes that an object manager sends and the bytes that it must receive. It shares no code with
 * the encoder of the library, so that a test compares two independent encoders.
 */
namespace support::wire {

/** A count or a length. */
std::string number(std::size_t value);
std::string text(const std::string& value);

/** The lowest `bytes` bytes of a number, most significant byte first. */
std::string bigEndian(unsigned long long value, unsigned bytes);

// Numbers of the CIM types.
enum Type {
    NO_TYPE = 0,
    UINT8 = 1,
    SINT8 = 2,
    UINT16 = 3,
    SINT16 = 4,
    UINT32 = 5,
    SINT32 = 6,
    UINT64 = 7,
    SINT64 = 8,
    STRING = 9,
    BOOLEAN = 10,
    REAL32 = 11,
    REAL64 = 12,
    DATETIME = 13,
    CHAR16 = 14,
    REFERENCE = 15,
    EMBEDDEDCLASS = 16,
    EMBEDDEDINSTANCE = 17
};

/** A property with one value, whose encoded bytes are given. */
std::string property(const std::string& name, Type type, const std::string& value);
/** A property with an array of values. */
std::string arrayProperty(const std::string& name, Type type, const std::vector<std::string>& values);
std::string nullProperty(const std::string& name, Type type, bool isArray = false);

inline std::string stringProperty(const std::string& name, const std::string& value) {
    return property(name, STRING, text(value));
}

std::string instance(const std::string& className, const std::vector<std::string>& properties);

/** A path to an instance. The keys are properties. */
std::string objectPath(const std::string& nameSpace, const std::string& url, const std::string& className,
                       const std::vector<std::string>& keys);

// Bodies of requests in the namespace root/cimv2 that ask for all properties. Counts and lengths must be
// below 128: a client writes larger ones in fewer bytes.
/** An enumeration of a class and its subclasses, without qualifiers and class origin. */
std::string enumerateRequest(const std::string& className);
/** A read of one instance, without qualifiers and class origin. */
std::string getRequest(const std::string& path);
/** A modification whose flags say that it includes qualifiers. */
std::string modifyRequest(const std::string& instance);

/** The body of a successful answer to an enumeration. */
std::string enumeration(const std::vector<std::string>& instances);

/** A successful answer with a chunked body. The trailers are lines without line ends. */
std::string chunkedReply(const std::string& body, const std::vector<std::string>& trailers = {});
/** The answer to a request that ended in a CIM error. */
std::string cimErrorReply(int code, const std::string& description);
/** A successful answer with a Content-Length. */
std::string plainReply(const std::string& body);
/** An answer with another status and no body. */
std::string statusReply(const std::string& status, const std::vector<std::string>& headers = {});

} // namespace support::wire
#endif
