#ifndef TESTS_INVENTORY_RECORDS_HPP
#define TESTS_INVENTORY_RECORDS_HPP
#include "QAV_UnixProcessAPI.hpp"

#include <string>
#include <vector>

/** A process as texts and numbers. */
struct Record {
    std::string handle;
    std::string name;
    std::string modulePath;
    std::vector<std::string> parameters;
    unsigned short runType;
    unsigned short executionState;
    std::string parentProcessID;
    unsigned long long realUserID;
    unsigned long long processGroupID;
    std::string totalCpuTime;
    unsigned long long realText;
    unsigned long long realData;
    unsigned long long realStack;
};

const QAV_UnixProcessAPI::tProcessInfoType statistics = QAV_UnixProcessAPI::eStatisticalInformation;
const QAV_UnixProcessAPI::tProcessInfoType information = QAV_UnixProcessAPI::eProcessInformation;

using Texts = std::vector<std::string>;

Record recordOf(const QAV_UnixProcessAPI::tUnixProcess& process);

/** The process at the cursor, read with the getters, which must all succeed. */
Record recordAt(const QAV_UnixProcessAPI& processes);

/** All processes of a table, in order. */
std::vector<Record> recordsIn(QAV_UnixProcessAPI& processes);

/** The handles of all processes of a table, in order. */
Texts handlesIn(QAV_UnixProcessAPI& processes);

#endif
