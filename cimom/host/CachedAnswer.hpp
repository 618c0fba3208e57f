#ifndef CIMOM_HOST_CACHED_ANSWER_HPP_INCLUDED
#define CIMOM_HOST_CACHED_ANSWER_HPP_INCLUDED
#include "host/Host.hpp"
#include "service/ChildAnswer.hpp"
#include "system/AnswerPending.hpp"

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** The versions of the files that an answer depends on. */
using FileVersions = std::vector<std::optional<FileVersion>>;

/** Timeout of a program of the host. */
inline constexpr std::chrono::seconds answerTimeout{30};
/** How long an answer or a failure is cached, unless the files that it depends on change. */
inline constexpr std::chrono::seconds answerLifetime{60};

struct AnswerTimes {
    std::chrono::milliseconds timeout = answerTimeout;
    std::chrono::milliseconds lifetime = answerLifetime;
    std::chrono::milliseconds failureLifetime = answerLifetime;
};

/**
 * The answer of a child process, which may take long because the child runs a program of the host. The child
 * starts when the answer is first needed, the loop goes on meanwhile, and the answer is cached for a while.
 */
class CachedAnswer {
public:
    /** @param io must not run after this object is gone */
    explicit CachedAnswer(boost::asio::io_context& io, AnswerTimes times = AnswerTimes());
    CachedAnswer(const CachedAnswer&) = delete;
    CachedAnswer& operator=(const CachedAnswer&) = delete;

    /**
     * The answer; null if the child failed. Starts the child if no valid answer is cached. Throws
     * AnswerPending while the child runs. The first call after that returns the answer even if it has
     * expired.
     */
    std::shared_ptr<const std::string> get(const FileVersions& versions, const service::Question& question);

private:
    bool isValid(const FileVersions& versions) const;
    void ask(const FileVersions& versions, const service::Question& question);
    void store(std::shared_ptr<const std::string> answer);
    void take(std::optional<std::string> answer);

    boost::asio::io_context& m_io;
    const AnswerTimes m_times;
    std::shared_ptr<Waiting> m_waiting; // null if no child runs
    bool m_hasAnswered = false;
    bool m_isReturned = false;
    std::shared_ptr<const std::string> m_answer; // null: failure
    FileVersions m_versions;                     // when the child started
    std::chrono::steady_clock::time_point m_since;
};

} // namespace cimom
#endif
