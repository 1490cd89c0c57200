// factory-sim's own terminal output, and the capture of the library's standard
// output: the library prints console lines with puts/printf as on the set's serial
// console; fd 1 goes through a pipe so that each line can be traced and re-emitted.
#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace factorysim {

class Output {
public:
    Output();
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // From now on fd 1 is a pipe; each complete line written to it is passed to
    // onLine and then written to the real standard output.
    bool CaptureStdout(std::function<void(const std::string&)> onLine);
    // Flushes the library's stdio and waits until every line written so far has
    // been passed on, so that console lines keep their place among our own.
    void Drain();
    void Release();

    // factory-sim's own lines, straight to the real standard output / error.
    void Print(const std::string& text);
    void Error(const std::string& text);
    // A line that often comes many times in a row (a timer's tick). With collapsing
    // on, a run of identical lines is written once, as "LINE × N", when another line
    // comes or at FlushRepeats; with it off it is an ordinary Print.
    void PrintRepeatable(const std::string& text);
    void CollapseRepeats(bool on);
    void FlushRepeats();

private:
    void ReadLoop();
    void WriteAll(int fd, const std::string& text);
    void FlushRepeatsLocked();

    std::mutex m_mutex;
    int m_realOut = 1;
    int m_pipeRead = -1;
    std::thread m_reader;
    std::atomic<unsigned long long> m_written{0};
    std::atomic<unsigned long long> m_passed{0};
    std::mutex m_passedMutex;
    std::condition_variable m_passedChanged;
    std::function<void(const std::string&)> m_onLine;
    bool m_collapse = false;
    std::string m_repeated;  // under m_mutex
    unsigned long long m_repeats = 0;
};

}  // namespace factorysim
