#include "http/Server.hpp"

#include <iostream>
#include <memory>
#include <utility>

namespace cimom {

namespace asio = boost::asio;
using boost::system::error_code;

Server::Server(asio::io_context& io, const std::string& path, const BinaryHandler& handler)
    : m_listening(path)
    , m_acceptor(io, asio::local::stream_protocol(), m_listening.duplicate())
    , m_pause(io)
    , m_context{handler, m_format, {}} {
    accept();
}

void Server::accept() {
    m_acceptor.async_accept([this](const error_code& error, Session::Socket socket) {
        if (error == asio::error::operation_aborted)
            return;
        if (error) {
            std::cerr << "owbcimomd: accepting a connection: " << error.message() << std::endl;
            retryAccept();
            return;
        }
        std::make_shared<Session>(std::move(socket), m_context)->start();
        accept();
    });
}

void Server::retryAccept() {
    // Out of descriptors or memory, most likely: trying again at once would do nothing else any more.
    m_pause.expires_after(std::chrono::seconds(1));
    m_pause.async_wait([this](const error_code& error) {
        if (!error)
            accept();
    });
}

} // namespace cimom
