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
 * Base of everything that the client library throws on its own account. Catch it by reference: it is
 * neither constructed nor copied from outside. Copying shares the texts and cannot fail. Making one cannot
 * fail for want of memory: it then lacks its texts.
 */
class OW_COMMON_API Exception : public std::exception {
public:
    static const int UNKNOWN_SUBCLASS_ID = -1;
    static const int UNKNOWN_ERROR_CODE = -1;

    ~Exception() noexcept override;

    /** Name of the class, as in "SocketException". */
    virtual const char* type() const;
    /** What went wrong; "" if nothing was said, never null. */
    virtual const char* getMessage() const;
    /** Source file that threw; never null. */
    const char* getFile() const;
    /** Line in getFile(). */
    int getLine() const { return m_line; }
    /** A code whose meaning the class defines, UNKNOWN_ERROR_CODE if none. */
    int getErrorCode() const { return m_errorCode; }
    /** Number of the class (ExceptionIds), UNKNOWN_SUBCLASS_ID if none. */
    int getSubClassId() const { return m_subClassId; }
    /** The exception that led to this one, which owns it; null if none. */
    const Exception* getSubException() const;
    /** Same text as getMessage(). */
    const char* what() const noexcept override;
    /** A copy of the exception's own class; the caller's to delete. */
    virtual Exception* clone() const;

protected:
    /** Copies the texts and clones the other exception; null pointers stand for nothing. */
    Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other = nullptr,
              int subClassId = UNKNOWN_SUBCLASS_ID);
    Exception(const Exception&) noexcept = default;
    Exception& operator=(const Exception&) noexcept = default;
    void swap(Exception& other) noexcept;
    void setErrorCode(int errorCode) { m_errorCode = errorCode; }
    void setSubClassId(int subClassId) { m_subClassId = subClassId; }

private:
    struct Texts;
    std::shared_ptr<const Texts> m_texts; // null when there was no memory for them
    int m_line;
    int m_errorCode;
    int m_subClassId;
};

/**
 * Writes `file: line type: message` and, in angle brackets, the exception that led to this one; "[no file]",
 * "[no line]", "[no message]" for what is missing.
 */
OW_COMMON_API std::ostream& operator<<(std::ostream& out, const Exception& e);

namespace detail {
/** `<message>: <errno>(<its text>)`, of the calling thread's errno. */
OW_COMMON_API std::string withErrno(const char* message);
} // namespace detail

} // namespace OpenWBEM

/** Declares class NAMEException, derived from BASE, in the current namespace. */
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

/** Defines what OW_DECLARE_EXCEPTION2 declared; ID is the number of the class. */
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
/** Defines what OW_DECLARE_EXCEPTION declared, without a number or with ExceptionIds::NAMEExceptionId. */
#define OW_DEFINE_EXCEPTION(NAME) OW_DEFINE_EXCEPTION2(NAME, OpenWBEM::Exception, -1)
#define OW_DEFINE_EXCEPTION_WITH_ID(NAME)                                                                    \
    OW_DEFINE_EXCEPTION2(NAME, OpenWBEM::Exception, ExceptionIds::NAME##ExceptionId)

/** Throws a TYPE with the place of the throw. */
#define OW_THROW(TYPE, MSG) throw TYPE(__FILE__, __LINE__, MSG)
#define OW_THROW_ERR(TYPE, MSG, CODE) throw TYPE(__FILE__, __LINE__, MSG, CODE)
/** SUB is the exception that led to this one. */
#define OW_THROW_SUBEX(TYPE, MSG, SUB) throw TYPE(__FILE__, __LINE__, MSG, -1, &(SUB))
/** The message is MSG and what errno says. */
#define OW_THROW_ERRNO_MSG(TYPE, MSG) throw TYPE(__FILE__, __LINE__, OpenWBEM::detail::withErrno(MSG).c_str())

#endif
