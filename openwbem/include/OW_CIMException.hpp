#ifndef OW_CIMEXCEPTION_HPP_INCLUDED
#define OW_CIMEXCEPTION_HPP_INCLUDED
#include "OW_Exception.hpp"
#include "OW_String.hpp"

namespace OpenWBEM {

/** A CIM error (DSP0200, status codes). The message is the code's text with the description in parentheses.
 */
class OW_COMMON_API CIMException : public Exception {
public:
    enum ErrNoType : int { // a peer may send any number
        SUCCESS = 0,
        FAILED = 1,
        ACCESS_DENIED = 2,
        INVALID_NAMESPACE = 3,
        INVALID_PARAMETER = 4,
        INVALID_CLASS = 5,
        NOT_FOUND = 6,
        NOT_SUPPORTED = 7,
        CLASS_HAS_CHILDREN = 8,
        CLASS_HAS_INSTANCES = 9,
        INVALID_SUPERCLASS = 10,
        ALREADY_EXISTS = 11,
        NO_SUCH_PROPERTY = 12,
        TYPE_MISMATCH = 13,
        QUERY_LANGUAGE_NOT_SUPPORTED = 14,
        INVALID_QUERY = 15,
        METHOD_NOT_AVAILABLE = 16,
        METHOD_NOT_FOUND = 17
    };

    CIMException(const char* file, int line, ErrNoType code, const char* description = nullptr,
                 const Exception* other = nullptr);
    CIMException(const CIMException&) noexcept = default;
    CIMException& operator=(const CIMException&) noexcept = default;
    ~CIMException() noexcept override;

    const char* type() const override;
    CIMException* clone() const override;
    const char* getMessage() const override;
    ErrNoType getErrNo() const { return static_cast<ErrNoType>(getErrorCode()); }
    /** Changes the code, but not a message that contains a description. */
    void setErrNo(ErrNoType code) { setErrorCode(code); }
    /** The description passed to the constructor; may be null. */
    const char* getDescription() const;
    /** Text of a code, as in "class does not exist"; "unknown error" for a code not in DSP0200. */
    static const char* getCodeDescription(ErrNoType code);

private:
    std::shared_ptr<const std::string> m_description;
};

/** Throws a CIMException with the current file and line. */
#define OW_THROWCIM(CODE) throw OpenWBEM::CIMException(__FILE__, __LINE__, CODE)
#define OW_THROWCIMMSG(CODE, MSG) throw OpenWBEM::CIMException(__FILE__, __LINE__, CODE, MSG)
/** SUB is the cause. Its message is the description unless MSG is given. */
#define OW_THROWCIM_SUBEX(CODE, SUB) OW_THROWCIMMSG_SUBEX(CODE, (SUB).getMessage(), SUB)
#define OW_THROWCIMMSG_SUBEX(CODE, MSG, SUB)                                                                 \
    throw OpenWBEM::CIMException(__FILE__, __LINE__, CODE, MSG, &(SUB))

} // namespace OpenWBEM
#endif
