#ifndef TESTS_CIMOM_UNLOGGED_HPP
#define TESTS_CIMOM_UNLOGGED_HPP
#include <iostream>
#include <streambuf>

/** Keeps standard error free of the log of an object manager in this process. */
class Unlogged {
public:
    Unlogged()
        : m_kept(std::cerr.rdbuf(nullptr)) {}
    ~Unlogged() {
        std::cerr.rdbuf(m_kept);
        std::cerr.clear();
    }
    Unlogged(const Unlogged&) = delete;
    Unlogged& operator=(const Unlogged&) = delete;

private:
    std::streambuf* m_kept;
};

#endif
