#ifndef OPENWBEM_XML_REPLY_HPP_INCLUDED
#define OPENWBEM_XML_REPLY_HPP_INCLUDED
#include "OW_CIMInstance.hpp"
#include "OW_Types.hpp"
#include "io/Window.hpp"
#include "xml/ObjectReader.hpp"
#include "xml/Tokenizer.hpp"

#include <string_view>

namespace OpenWBEM {
namespace xml {

/**
 * The object manager's reply to one request (DSP0200, SIMPLERSP), read as it comes in.
 *
 * Throws CIMException for an error of the object manager and for a reply that is none to the request,
 * and what Tokenizer and ObjectReader throw.
 */
class Reply {
public:
    /**
     * Reads up to what the operation returns, if anything.
     *
     * @param in must outlive the reply
     * @param messageId that of the request
     * @param method operation of the request
     */
    Reply(io::Window& in, UInt32 messageId, const char* method);

    /** The next instance that the operation returns, in the reply's order; false when there is none left. */
    bool next(CIMInstance& instance);
    /**
     * The instance of an operation that returns one, in place of next(); null when the operation returns
     * nothing. A return value without an instance is a CIMException.
     */
    CIMInstance instance();
    /** Passes over what is left, up to the end of the document and of the window. */
    void finish();

private:
    void enter(const char* name);
    void requireVersion(const char* attribute, std::initializer_list<std::string_view> understood);
    void requireMessage(UInt32 id);
    void requireMethod(std::string_view method);
    void toReturnValue();
    [[noreturn]] void throwError();

    io::Window& m_window;
    Tokenizer m_in;
    ObjectReader m_objects;
    bool m_isInReturnValue = false;
};

} // namespace xml
} // namespace OpenWBEM
#endif
