#ifndef TESTS_CIMOM_BENT_REQUESTS_HPP
#define TESTS_CIMOM_BENT_REQUESTS_HPP
#include <cstddef>
#include <random>
#include <string>
#include <vector>

/**
 * The requests of all recorded conversations, each once, with their heads. Of those that differ in nothing
 * but who logs in how, all are there that log in.
 */
std::vector<std::string> recordedRequests();

/** Numbers that are the same in every run, on every machine. */
class Dice {
public:
    std::size_t below(std::size_t limit) { return m_generator() % limit; }

private:
    std::mt19937 m_generator{20261121};
};

/** Bytes of which one to three bits have changed. */
std::string bent(std::string bytes, Dice& dice);

#endif
