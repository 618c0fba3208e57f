#ifndef OW_EXCEPTION_HPP_INCLUDED
#define OW_EXCEPTION_HPP_INCLUDED
#include "OW_ExceptionIds.hpp"
#include "OW_config.h"
#include <exception>
#include <iosfwd>
#include <memory>
#include <string>

namespace OpenWBEM {

/**
 * Base of all exceptions that the client library throws. Catch it by reference: programs cannot construct or
 * copy it. Copies share the texts; copying never fails. Construction never fails: when out of memory, the
 * exception has no texts.
 */
class OW_COMMON_API Exception : public std::exception {
public:
    static const int UNKNOWN_SUBCLASS_ID = -1;
    static const int UNKNOWN_ERROR_CODE = -1;

    ~Exception() noexcept override;

    /** Name of the class, as in "SocketException". */
    virtual const char* type() const;
    /** The error message; may be empty, never null. */
    virtual const char* getMessage() const;
    /** Source file of the throw; never null. */
    const char* getFile() const;
    /** Line in getFile(). */
    int getLine() const { return m_line; }
    /** A code that the class defines; UNKNOWN_ERROR_CODE if there is none. */
    int getErrorCode() const { return m_errorCode; }
    /** Number of the class (ExceptionIds); UNKNOWN_SUBCLASS_ID if there is none. */
    int getSubClassId() const { return m_subClassId; }
    /** The cause, owned by this exception; may be null. */
    const Exception* getSubException() const;
    /** The same as getMessage(). */
    const char* what() const noexcept override;
    /** A copy of the dynamic type. The caller deletes it. */
    virtual Exception* clone() const;

protected:
    /** Copies the texts and clones the cause; pointers may be null. */
    Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other = nullptr,
              int subClassId = UNKNOWN_SUBCLASS_ID);
    Exception(const Exception&) noexcept = default;
    Exception& operator=(const Exception&) noexcept = default;
    void swap(Exception& other) noexcept;
    void setErrorCode(int errorCode) { m_errorCode = errorCode; }
    void setSubClassId(int subClassId) { m_subClassId = subClassId; }

private:
    struct Texts;
    std::shared_ptr<const Texts> m_texts; // null when out of memory
    int m_line;
    int m_errorCode;
    int m_subClassId;
};

/**
 * Writes `file: line type: message` and the cause in angle brackets. "[no file]", "[no line]", "[no message]"
 * replace empty parts.
 */
OW_COMMON_API std::ostream& operator<<(std::ostream& out, const Exception& e);

namespace detail {
/** `<message>: <errno>(<text of errno>)`. */
OW_COMMON_API std::string withErrno(const char* message);
} // namespace detail

} // namespace OpenWBEM

/** Declares the class NAMEException, derived from BASE, in the current namespace. */
#define OW_DECLARE_EXCEPTION2(NAME, BASE)                                                                    \
    class OW_COMMON_API NAME##Exception : public BASE {                                                      \
    public:                                                                                                  \
        NAME##Exception(const char* file, int line, const char* msg, int errorCode = -1,                     \
                        const OpenWBEM::Exception* other = nullptr, int subClassId = -1);                    \
        NAME##Exception(const NAME##Exception&) noexcept = default;                                          \
        NAME##Exception& operator=(const NAME##Exception&) noexcept = default;                               \
        ~NAME##Exception() noexcept override;                                                                \
        const char* type() const override;                                                                   \
        NAME##Exception* clone() const override;                                                             \
    };
#define OW_DECLARE_EXCEPTION(NAME) OW_DECLARE_EXCEPTION2(NAME, OpenWBEM::Exception)

/** Defines the members of a class that OW_DECLARE_EXCEPTION2 declares; ID is the number of the class. */
#define OW_DEFINE_EXCEPTION2(NAME, BASE, ID)                                                                 \
    NAME##Exception::NAME##Exception(const char* file, int line, const char* msg, int errorCode,             \
                                     const OpenWBEM::Exception* other, int subClassId)                       \
        : BASE(file, line, msg, errorCode, other, subClassId == -1 ? (ID) : subClassId) {}                   \
    NAME##Exception::~NAME##Exception() noexcept = default;                                                  \
    const char* NAME##Exception::type() const {                                                              \
        return #NAME "Exception";                                                                            \
    }                                                                                                        \
    NAME##Exception* NAME##Exception::clone() const {                                                        \
        return new NAME##Exception(*this);                                                                   \
    }
/** The same for OW_DECLARE_EXCEPTION, without a number or with ExceptionIds::NAMEExceptionId. */
#define OW_DEFINE_EXCEPTION(NAME) OW_DEFINE_EXCEPTION2(NAME, OpenWBEM::Exception, -1)
#define OW_DEFINE_EXCEPTION_WITH_ID(NAME)                                                                    \
    OW_DEFINE_EXCEPTION2(NAME, OpenWBEM::Exception, ExceptionIds::NAME##ExceptionId)

/** Throws a TYPE with the current file and line. */
#define OW_THROW(TYPE, MSG) throw TYPE(__FILE__, __LINE__, MSG)
#define OW_THROW_ERR(TYPE, MSG, CODE) throw TYPE(__FILE__, __LINE__, MSG, CODE)
/** SUB is the cause. */
#define OW_THROW_SUBEX(TYPE, MSG, SUB) throw TYPE(__FILE__, __LINE__, MSG, -1, &(SUB))
/** The message is MSG and errno. */
#define OW_THROW_ERRNO_MSG(TYPE, MSG) throw TYPE(__FILE__, __LINE__, OpenWBEM::detail::withErrno(MSG).c_str())

#endif
