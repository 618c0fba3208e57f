#include "http/Stream.hpp"

#include <stdexcept>

namespace http {

std::shared_ptr<TlsContext> readTlsFiles(const TlsFiles&) {
    throw std::runtime_error("built without TLS");
}

Stream::Stream(Socket socket, TlsContext*)
    : m_socket(std::move(socket)) {}

bool Stream::hasTls() const {
    return false;
}

void Stream::shakeHands(Done) {}

std::string Stream::subject() {
    return std::string();
}

void Stream::cancel() {
    boost::system::error_code ignored;
    m_socket.cancel(ignored);
}

void Stream::close(std::shared_ptr<const void>) {
    boost::system::error_code ignored;
    m_socket.shutdown(Socket::shutdown_both, ignored);
    m_socket.close(ignored);
}

} // namespace http
