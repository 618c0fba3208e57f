#include "Chunked.hpp"

#include <cstdio>

std::string chunk(std::string_view data, const ChunkLines& lines) {
    char size[16];
    std::snprintf(size, sizeof size, "%zX", data.size());
    std::string result = std::string(lines.zeros) + size + lines.extensions + "\r\n";
    result += data.empty() ? lines.trailers : data;
    return result + "\r\n";
}

std::string chunkedRequest(std::string_view request, std::size_t size, const ChunkLines& lines) {
    const std::size_t bodyAt = request.find("\r\n\r\n") + 4;
    std::string result(request.substr(0, bodyAt));
    const std::size_t lengthAt = result.find("Content-Length: ");
    result.replace(lengthAt, result.find("\r\n", lengthAt) - lengthAt, "Transfer-Encoding: chunked");
    for (const std::string_view piece : piecesOf(request.substr(bodyAt), size))
        result += chunk(piece, lines);
    return result + chunk("", lines);
}

std::vector<std::string_view> piecesOf(std::string_view text, std::size_t size) {
    std::vector<std::string_view> pieces;
    for (std::size_t at = 0; at < text.size(); at += size)
        pieces.push_back(text.substr(at, size));
    return pieces;
}
