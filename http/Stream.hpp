#ifndef HTTP_STREAM_HPP_INCLUDED
#define HTTP_STREAM_HPP_INCLUDED
#include "http/Tls.hpp"

#ifdef HTTP_HAS_TLS
#include <boost/asio/ssl/stream.hpp>
#endif
#include <boost/asio/basic_stream_socket.hpp>
#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/io_context.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace http {

/**
 * A connected socket, with or without TLS: what Asio calls an AsyncReadStream and an AsyncWriteStream. It
 * must not move, and must live until the handlers of its operations have been called.
 */
class Stream {
public:
    /** Not any_io_executor: its copies need memory in functions that may not throw. */
    using executor_type = boost::asio::io_context::executor_type;
    using Socket = boost::asio::basic_stream_socket<boost::asio::generic::stream_protocol, executor_type>;
    /** Called with why the handshake failed; nothing if it did not. */
    using Done = std::function<void(const std::optional<std::string>& failure)>;

    /** @param tls null: without TLS */
    Stream(Socket socket, TlsContext* tls);
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    executor_type get_executor() { return m_socket.get_executor(); }
    template <class Buffers, class Handler>
    void async_read_some(const Buffers& buffers, Handler&& handler) {
        onTop([&](auto& layer) { layer.async_read_some(buffers, std::forward<Handler>(handler)); });
    }
    template <class Buffers, class Handler>
    void async_write_some(const Buffers& buffers, Handler&& handler) {
        onTop([&](auto& layer) { layer.async_write_some(buffers, std::forward<Handler>(handler)); });
    }

    bool hasTls() const;
    /** Whether bytes can be read and written: always without TLS, after the handshake with TLS. */
    bool isReady() const { return m_isReady || !hasTls(); }
    /** Begins TLS; the first operation of a stream with TLS. */
    void shakeHands(Done done);
    /** The common name in the client's certificate, which has been verified. Empty if the client has none, or
     * not exactly one name. */
    std::string subject();

    /** Ends the current operations with an error. */
    void cancel();
    /**
     * Closes the connection. With TLS, it sends close_notify first if that needs no waiting.
     *
     * @param owner keeps this object alive until all operations have ended
     */
    void close(std::shared_ptr<const void> owner);

    int descriptor() { return m_socket.native_handle(); }

private:
    /** Calls `use` with what reads and writes the bytes of the application. */
    template <class Use>
    void onTop(Use use) {
#ifdef HTTP_HAS_TLS
        if (m_tls) {
            use(*m_tls);
            return;
        }
#endif
        use(m_socket);
    }

    Socket m_socket;
#ifdef HTTP_HAS_TLS
    std::optional<boost::asio::ssl::stream<Socket&>> m_tls;
#endif
    bool m_isReady = false; // the handshake has succeeded
};

} // namespace http
#endif
