#include "OW_Exception.hpp"

#include "MessageText.hpp"

#include <cerrno>
#include <new>
#include <ostream>
#include <string>
#include <system_error>
#include <utility>

namespace OpenWBEM {

struct Exception::Texts {
    Texts(const char* theFile, const char* theMessage)
        : file(theFile ? theFile : "")
        , message(messageText(theMessage)) {}

    std::string file;
    std::string message;
    std::unique_ptr<const Exception> other;
};

Exception::Exception(const char* file, int line, const char* msg, int errorCode, const Exception* other,
                     int subClassId)
    : m_line(line)
    , m_errorCode(errorCode)
    , m_subClassId(subClassId) {
    try {
        const auto texts = std::make_shared<Texts>(file, msg);
        m_texts = texts;
        if (other)
            texts->other.reset(other->clone());
    } catch (const std::bad_alloc&) {
        // Told without: what goes wrong is of more use than that there was no memory to say it.
    }
}

Exception::~Exception() noexcept = default;

void Exception::swap(Exception& other) noexcept {
    std::swap(m_texts, other.m_texts);
    std::swap(m_line, other.m_line);
    std::swap(m_errorCode, other.m_errorCode);
    std::swap(m_subClassId, other.m_subClassId);
}

const char* Exception::type() const {
    return "Exception";
}

const char* Exception::getMessage() const {
    return m_texts ? m_texts->message.c_str() : "";
}

const char* Exception::getFile() const {
    return m_texts ? m_texts->file.c_str() : "";
}

const Exception* Exception::getSubException() const {
    return m_texts ? m_texts->other.get() : nullptr;
}

const char* Exception::what() const noexcept {
    return getMessage();
}

Exception* Exception::clone() const {
    return new Exception(*this);
}

std::ostream& operator<<(std::ostream& out, const Exception& e) {
    const auto orElse = [](const char* text, const char* instead) { return *text ? text : instead; };
    out << orElse(e.getFile(), "[no file]") << ": ";
    if (e.getLine())
        out << e.getLine();
    else
        out << "[no line]";
    out << ' ' << e.type() << ": " << orElse(e.getMessage(), "[no message]");
    if (e.getSubException())
        out << " <" << *e.getSubException() << '>';
    return out;
}

std::string detail::withErrno(const char* message) {
    const int number = errno;
    return std::string(message) + ": " + std::to_string(number) + '(' +
           std::generic_category().message(number) + ')';
}

} // namespace OpenWBEM
