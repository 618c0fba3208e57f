#ifndef TESTS_INVENTORY_PIPE_HPP
#define TESTS_INVENTORY_PIPE_HPP
#include <functional>
#include <string>
#include <thread>
#include <vector>

/**
 * Replaces a file by a named pipe. Waits for its reader, which must come, then runs `meanwhile`, then writes
 * the pieces. Each piece is a packet, pipe(2): a read returns one piece at most.
 */
class Pipe {
public:
    Pipe(const std::string& path, std::vector<std::string> pieces, std::function<void()> meanwhile = {});
    ~Pipe();
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

private:
    void write(const std::string& path) const;

    const std::vector<std::string> m_pieces;
    const std::function<void()> m_meanwhile;
    std::thread m_thread;
};

#endif
