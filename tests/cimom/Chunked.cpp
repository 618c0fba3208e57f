#include "Chunked.hpp"

#include <cstdio>

std::vector<std::string_view> piecesOf(std::string_view text, std::size_t size) {
    std::vector<std::string_view> pieces;
    for (std::size_t at = 0; at < text.size(); at += size)
        pieces.push_back(text.substr(at, size));
    return pieces;
}

std::string chunked(std::string_view body, const Chunking& way) {
    const auto line = [&way](std::size_t size) {
        char digits[16];
        std::snprintf(digits, sizeof digits, "%zX", size);
        return std::string(way.zeros) + digits + way.extensions + "\r\n";
    };
    std::string result;
    for (const std::string_view chunk : piecesOf(body, way.size))
        result.append(line(chunk.size())).append(chunk).append("\r\n");
    return result + line(0) + way.trailers + "\r\n";
}

std::string chunkedRequest(std::string_view request, const Chunking& way) {
    const std::size_t bodyAt = request.find("\r\n\r\n") + 4;
    std::string head(request.substr(0, bodyAt));
    const std::size_t lengthAt = head.find("Content-Length: ");
    head.replace(lengthAt, head.find("\r\n", lengthAt) - lengthAt, "Transfer-Encoding: chunked");
    return head + chunked(request.substr(bodyAt), way);
}
