#ifndef CIMOM_HOST_SOFTWARE_TYPES_HPP_INCLUDED
#define CIMOM_HOST_SOFTWARE_TYPES_HPP_INCLUDED
#include "OW_String.hpp"
#include "host/Host.hpp"
#include "host/KeptAnswer.hpp"

#include <memory>
#include <string>
#include <vector>

namespace cimom {

/** The kinds of programs as a software inventory has printed them. */
class SoftwareTypes {
public:
    explicit SoftwareTypes(const std::string& printed);
    SoftwareTypes(const SoftwareTypes&) = delete;
    SoftwareTypes& operator=(const SoftwareTypes&) = delete;

    /** RFC 2790, hrSWRunType, of a program by its name. */
    unsigned short of(const OpenWBEM::String& name) const;

private:
    const std::vector<std::string> m_lines;
    std::vector<const char*> m_texts; // of the lines, and a null
};

/** Runs the host's /kq/bin/softinv, beside the loop; see KeptAnswer. */
class SoftwareTypeSource {
public:
    /**
     * @param host must outlive this object
     * @param io see KeptAnswer
     */
    SoftwareTypeSource(const Host& host, boost::asio::io_context& io)
        : m_host(host)
        , m_answer(io) {}

    /** What it has printed; null when the program is not there or has failed to run. Throws AnswerPending
     * while it runs. */
    std::shared_ptr<const SoftwareTypes> types();

private:
    const Host& m_host;
    KeptAnswer m_answer;
};

} // namespace cimom
#endif
