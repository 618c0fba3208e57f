#include "exporter/Block.hpp"

#include "util/Number.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace exporter {
namespace {

/** The line before the texts: group, status, microseconds, dropped rows, and the sizes of the texts: why the
 * reading failed, and the metrics in each format. */
constexpr std::size_t numbersOfHead = 5 + std::size(metrics::formats);
constexpr std::size_t maximumHead = 128;

std::optional<std::vector<std::uint64_t>> numbersIn(std::string_view line) {
    std::vector<std::uint64_t> numbers;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find(' '), line.size());
        const auto number = util::decimal<std::uint64_t>(line.substr(0, end));
        if (!number)
            return std::nullopt;
        numbers.push_back(*number);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return numbers.size() == numbersOfHead ? std::optional(numbers) : std::nullopt;
}

} // namespace

Block readBlock(long group) {
    const metrics::Measured measured = metrics::measure(group);
    Block block{measured.reading, measured.failure.text, {}};
    for (std::size_t i = 0; i < block.texts.size(); ++i)
        block.texts[i] = metrics::linesOf(measured.families, metrics::formats[i]);
    return block;
}

std::string bytesOf(const Block& block) {
    const metrics::Reading& reading = block.reading;
    std::string bytes = std::to_string(reading.group) + ' ' + std::to_string(reading.status) + ' ' +
                        std::to_string(reading.duration.count()) + ' ' + std::to_string(reading.droppedRows) +
                        ' ' + std::to_string(block.failure.size());
    for (const std::string& text : block.texts)
        bytes += ' ' + std::to_string(text.size());
    bytes += '\n' + block.failure;
    for (const std::string& text : block.texts)
        bytes += text;
    return bytes;
}

bool BlockDecoder::add(std::string_view bytes, const std::function<void(Block)>& onBlock) {
    m_received += bytes.size();
    if (m_received > maximumSize)
        return false;
    m_pending += bytes;
    for (;;) {
        const std::size_t headSize = m_pending.find('\n') + 1;
        if (headSize == 0)
            return m_pending.size() < maximumHead;
        const auto numbers = numbersIn(std::string_view(m_pending).substr(0, headSize - 1));
        if (!numbers || std::any_of(numbers->begin() + 4, numbers->end(),
                                    [](std::uint64_t size) { return size > maximumSize; }))
            return false;
        const auto failure = static_cast<std::size_t>((*numbers)[4]);
        const auto first = static_cast<std::size_t>((*numbers)[5]);
        const auto second = static_cast<std::size_t>((*numbers)[6]);
        if (m_pending.size() < headSize + failure + first + second)
            return true;
        onBlock({{static_cast<long>((*numbers)[0]), static_cast<long>((*numbers)[1]),
                  std::chrono::microseconds((*numbers)[2]), static_cast<std::size_t>((*numbers)[3])},
                 m_pending.substr(headSize, failure),
                 {m_pending.substr(headSize + failure, first),
                  m_pending.substr(headSize + failure + first, second)}});
        m_pending.erase(0, headSize + failure + first + second);
    }
}

} // namespace exporter
