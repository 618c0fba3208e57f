#ifndef CIMOM_HOST_KEPT_ANSWER_HPP_INCLUDED
#define CIMOM_HOST_KEPT_ANSWER_HPP_INCLUDED
#include "host/Host.hpp"
#include "system/ChildAnswer.hpp"

#include <boost/asio/io_context.hpp>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace cimom {

/** The present versions of the files that an answer depends on. */
using FileVersions = std::vector<std::optional<FileVersion>>;

/** How long a program of the host may take to answer. */
inline constexpr std::chrono::seconds answerTime{30};
/** How long an answer is kept, as long as the files that it depends on stay the same; and a failure. */
inline constexpr std::chrono::seconds answerKept{60};

/** The times of KeptAnswer. */
struct AnswerTimes {
    std::chrono::milliseconds answer = answerTime;
    std::chrono::milliseconds kept = answerKept;
    std::chrono::milliseconds failureKept = answerKept;
};

/**
 * The answer of a child process to a question that takes time, as that of a program of the host. It is asked
 * for when it is first needed, beside the loop, and kept for a while.
 */
class KeptAnswer {
public:
    /** @param io must not run any more when this object is gone */
    explicit KeptAnswer(boost::asio::io_context& io, AnswerTimes times = AnswerTimes());
    KeptAnswer(const KeptAnswer&) = delete;
    KeptAnswer& operator=(const KeptAnswer&) = delete;

    /**
     * The answer; null when there was none. Throws AnswerPending while the child is at it, after starting the
     * child when there is no answer that may still be kept. Whoever waits gets an answer then, even if it is
     * not kept any more: each answer is handed out at least once.
     */
    std::shared_ptr<const std::string> get(const FileVersions& versions, const Question& question);

private:
    bool isKept(const FileVersions& versions) const;
    void ask(const FileVersions& versions, const Question& question);
    void keep(std::shared_ptr<const std::string> answer);
    void take(std::optional<std::string> answer);

    boost::asio::io_context& m_io;
    const AnswerTimes m_times;
    std::shared_ptr<Waiting> m_waiting; // null when no child is at it
    bool m_hasAnswered = false;
    bool m_isHandedOut = false;
    std::shared_ptr<const std::string> m_answer; // null: a failure
    FileVersions m_versions;                     // when the child was asked
    std::chrono::steady_clock::time_point m_since;
};

} // namespace cimom
#endif
