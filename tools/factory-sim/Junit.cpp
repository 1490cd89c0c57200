// The JUnit XML report: what a CI shows as a test run. One testsuite per script;
// one testcase per phase, or one for the whole script when it has none.
#include <sstream>

#include "Station.h"

namespace factorysim {

namespace {

std::string Xml(const std::string& text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
            case '&':
                out += "&amp;";
                break;
            case '<':
                out += "&lt;";
                break;
            case '>':
                out += "&gt;";
                break;
            case '"':
                out += "&quot;";
                break;
            case '\'':
                out += "&apos;";
                break;
            default:
                // XML 1.0 has no place for other control characters.
                if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') {
                    out += ' ';
                } else {
                    out += c;
                }
        }
    }
    return out;
}

std::string Seconds(uint64_t ms) {
    char text[32];
    std::snprintf(text, sizeof(text), "%.3f", static_cast<double>(ms) / 1000.0);
    return text;
}

struct Case {
    std::string name;
    uint64_t ms = 0;
    bool skipped = false;
    std::vector<const Step*> bad;  // its failed or erroneous steps
};

}  // namespace

std::string Station::JunitXml() const {
    std::lock_guard<std::mutex> lock(m_mutex);
    std::string suite = m_script;
    if (const auto slash = suite.find_last_of('/'); slash != std::string::npos) {
        suite = suite.substr(slash + 1);
    }
    std::vector<Case> cases;
    if (m_phases.empty()) {
        Case whole{suite, m_endMs - m_startMs, false, {}};
        for (const Step& s : m_steps) {
            if (s.outcome != StepOutcome::Pass) {
                whole.bad.push_back(&s);
            }
        }
        cases.push_back(whole);
    } else {
        // Steps before the first phase belong to a case of their own.
        bool before = false;
        for (const Step& s : m_steps) {
            before = before || s.phase.empty();
        }
        if (before) {
            Case setup{"(before the first phase)", 0, false, {}};
            for (const Step& s : m_steps) {
                if (s.phase.empty()) {
                    setup.ms += s.endMs - s.startMs;
                    if (s.outcome != StepOutcome::Pass) {
                        setup.bad.push_back(&s);
                    }
                }
            }
            cases.push_back(setup);
        }
        for (const Phase& p : m_phases) {
            Case c{p.name, p.endMs - p.startMs, !p.reached, {}};
            for (const Step& s : m_steps) {
                if (s.phase == p.name && s.startMs >= p.startMs && s.outcome != StepOutcome::Pass) {
                    c.bad.push_back(&s);
                }
            }
            cases.push_back(c);
        }
    }
    size_t failures = 0;
    size_t errors = 0;
    size_t skipped = 0;
    for (const Case& c : cases) {
        skipped += c.skipped ? 1 : 0;
        if (!c.bad.empty()) {
            (c.bad.front()->outcome == StepOutcome::Fail ? failures : errors) += 1;
        }
    }
    // A run that could not start has no step to blame: the error goes on the suite.
    const bool suiteError = !m_error.empty() && failures + errors == 0;
    std::ostringstream out;
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        << "<testsuites tests=\"" << cases.size() << "\" failures=\"" << failures << "\" errors=\""
        << (errors + (suiteError ? 1 : 0)) << "\" skipped=\"" << skipped << "\" time=\""
        << Seconds(m_endMs - m_startMs) << "\">\n"
        << "  <testsuite name=\"" << Xml(suite) << "\" tests=\"" << cases.size() << "\" failures=\""
        << failures << "\" errors=\"" << (errors + (suiteError ? 1 : 0)) << "\" skipped=\""
        << skipped << "\" time=\"" << Seconds(m_endMs - m_startMs) << "\" timestamp=\""
        << Xml(m_startWall) << "\" hostname=\"" << Xml(m_station) << "\">\n";
    for (const Case& c : cases) {
        out << "    <testcase classname=\"" << Xml(suite) << "\" name=\"" << Xml(c.name)
            << "\" time=\"" << Seconds(c.ms) << "\"";
        if (c.bad.empty() && !c.skipped && !(suiteError && &c == &cases.back())) {
            out << "/>\n";
            continue;
        }
        out << ">\n";
        if (c.skipped) {
            out << "      <skipped message=\"not reached\"/>\n";
        } else if (!c.bad.empty()) {
            const Step& s = *c.bad.front();
            const bool fail = s.outcome == StepOutcome::Fail;
            const std::string message = fail ? "line " + std::to_string(s.line) + ": expected " +
                                                   s.expected + "; received " + s.received
                                             : "line " + std::to_string(s.line) + ": " + s.output;
            out << "      <" << (fail ? "failure" : "error") << " message=\"" << Xml(message)
                << "\" type=\"" << (fail ? "expect" : "script") << "\">" << Xml(s.text)
                << "\nexpected: " << Xml(s.expected) << "\nreceived: " << Xml(s.received) << "\n</"
                << (fail ? "failure" : "error") << ">\n";
        } else {
            out << "      <error message=\"" << Xml(m_error) << "\" type=\"run\"/>\n";
        }
        out << "    </testcase>\n";
    }
    out << "  </testsuite>\n</testsuites>\n";
    return out.str();
}

}  // namespace factorysim
