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
 * The reply to one request (DSP0200, SIMPLERSP), read as it arrives.
 *
 * Throws CIMException for an error that the object manager reports and for a reply to another request, and
 * the exceptions of Tokenizer and ObjectReader.
 */
class Reply {
public:
    /**
     * Reads up to the return value, if there is one.
     *
     * @param in must outlive the reply
     * @param messageId message ID of the request
     * @param method operation of the request
     */
    Reply(io::Window& in, UInt32 messageId, const char* method);

    /** Reads the next returned instance; false at the end. */
    bool next(CIMInstance& instance);
    /**
     * Reads the instance of an operation that returns one; null if there is no return value. Throws
     * CIMException for a return value without an instance.
     */
    CIMInstance instance();
    /** Reads the rest, up to the end of the document and of the window. */
    void finish();

private:
    void enter(const char* name);
    void requireVersion(const char* attribute, std::initializer_list<std::string_view> accepted);
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
