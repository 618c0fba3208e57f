#ifndef OW_EXCEPTION_HPP_INCLUDED
#define OW_EXCEPTION_HPP_INCLUDED
#include "OW_config.h"
#include <exception>
#include <iosfwd>
#include <memory>

namespace OpenWBEM {

/**
 * Base of everything that the client library throws on its own account. Catch it by reference: it is
 * neither constructed nor copied from outside. Copying shares the texts and cannot fail.
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
    int getLine() const;
    /** A code whose meaning the class defines, UNKNOWN_ERROR_CODE if none. */
    int getErrorCode() const;
    /** Number of the class, UNKNOWN_SUBCLASS_ID if none. */
    int getSubClassId() const;
    /** Same text as getMessage(). */
    const char* what() const noexcept override;

protected:
    Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other = nullptr,
              int subClassId = UNKNOWN_SUBCLASS_ID);
    Exception(const Exception&) noexcept = default;
    Exception& operator=(const Exception&) noexcept = default;

private:
    struct Data;
    std::shared_ptr<const Data> m_data;
};

/** Writes `file: line type: message`. */
OW_COMMON_API std::ostream& operator<<(std::ostream& out, const Exception& e);

} // namespace OpenWBEM

/** Declares class NAMEException in the current namespace. */
#define OW_DECLARE_EXCEPTION(NAME)                                                                           \
    class OW_COMMON_API NAME##Exception : public OpenWBEM::Exception {                                       \
    public:                                                                                                  \
        NAME##Exception(const char* file, int line, const char* msg, int errorCode = -1,                     \
                        const OpenWBEM::Exception* other = nullptr, int subClassId = -1);                    \
        NAME##Exception(const NAME##Exception&) noexcept = default;                                          \
        ~NAME##Exception() noexcept override;                                                                \
        const char* type() const override;                                                                   \
    };

/** Defines what OW_DECLARE_EXCEPTION declared; ID is the number of the class. */
#define OW_DEFINE_EXCEPTION(NAME, ID)                                                                        \
    NAME##Exception::NAME##Exception(const char* file, int line, const char* msg, int errorCode,             \
                                     const OpenWBEM::Exception* other, int subClassId)                       \
        : OpenWBEM::Exception(file, line, msg, errorCode, other, subClassId == -1 ? (ID) : subClassId) {}    \
    NAME##Exception::~NAME##Exception() noexcept = default;                                                  \
    const char* NAME##Exception::type() const {                                                              \
        return #NAME "Exception";                                                                            \
    }

/** Throws a TYPE with the place of the throw. */
#define OW_THROW(TYPE, MSG) throw TYPE(__FILE__, __LINE__, MSG)
#define OW_THROW_ERR(TYPE, MSG, CODE) throw TYPE(__FILE__, __LINE__, MSG, CODE)

#endif
