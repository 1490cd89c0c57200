// The simulated set the harnesses run the library on: made once per process, in
// virtual time, its journal kept to a window so that millions of runs stay small.
#pragma once

#include "FactoryManager.h"
#include "SimSet.h"
#include "SimWebApp.h"
#include "TVManager.h"

namespace fuzz {

inline sim::Set& Tv() {
    static bool made = [] {
        sim::Options options;
        options.port = 0;
        sim::Set::Instance().Reset(options);
        sim::Set::Instance().GetJournal().SetWindow(1000, 1024 * 1024);
        sim::Set::Instance().Get<sim::WebAppState>().SetNoteWindow(1000);
        return true;
    }();
    (void)made;
    return sim::Set::Instance();
}

// Ends a run: the journal's lines go, so that a run leaves the heap as it found it
// and libFuzzer's leak check stays quiet (and fast) unless something really leaks.
inline void EndRun() { sim::Set::Instance().GetJournal().Clear(); }

inline FactoryManager& Fm() {
    Tv();
    return *TVManager::GetInstance()->getFactoryManager();
}

}  // namespace fuzz
