#ifndef TESTS_CIMOM_MUTATED_REQUESTS_HPP
#define TESTS_CIMOM_MUTATED_REQUESTS_HPP
#include <cstddef>
#include <random>
#include <string>
#include <vector>

/** Recorded requests with their heads: one for each distinct body, and every request with a login. */
std::vector<std::string> recordedRequests();

/** Random numbers, the same in each run and on each machine. */
class Dice {
public:
    std::size_t below(std::size_t limit) { return m_generator() % limit; }

private:
    std::mt19937 m_generator{20261121};
};

/** The bytes with one to three bits flipped. */
std::string mutated(std::string bytes, Dice& dice);

#endif
