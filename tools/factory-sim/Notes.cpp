#include "Notes.h"

#include <json-c/json.h>

#include <condition_variable>
#include <deque>
#include <mutex>

#include "SimWebApp.h"

namespace factorysim {

namespace {

struct Queue {
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<Note> notes;
    size_t window = 0;
    size_t dropped = 0;
    std::deque<Note> screen;
};

Queue& TheQueue() {
    static Queue queue;
    return queue;
}

Note FromUi(const sim::UiNote& n) { return Note{n.channel, n.cmd, n.data, n.numeric}; }

}  // namespace

void Notes::Watch(std::function<void(const Note&)> onNote, size_t window) {
    Queue& q = TheQueue();
    {
        std::lock_guard<std::mutex> lock(q.mutex);
        q.window = window;
    }
    sim::Set::Instance().Get<sim::WebAppState>().SetOnNote([onNote](const sim::UiNote& n) {
        const Note note = FromUi(n);
        onNote(note);
        Queue& queue = TheQueue();
        {
            std::lock_guard<std::mutex> lock(queue.mutex);
            queue.notes.push_back(note);
            if (note.channel == 0) {
                if (note.cmd == "HideAllUIExcept") {
                    queue.screen.clear();
                }
                queue.screen.push_back(note);
                if (queue.screen.size() > kScreenLimit) {
                    queue.screen.pop_front();
                }
            }
            if (queue.notes.size() > queue.window) {
                queue.notes.pop_front();
                ++queue.dropped;
            }
        }
        queue.arrived.notify_all();
    });
}

std::optional<Note> Notes::TakeFirst(const Match& match) {
    Queue& q = TheQueue();
    std::lock_guard<std::mutex> lock(q.mutex);
    for (auto it = q.notes.begin(); it != q.notes.end(); ++it) {
        if (match(*it)) {
            Note found = *it;
            q.notes.erase(q.notes.begin(), std::next(it));
            return found;
        }
    }
    return std::nullopt;
}

std::vector<Note> Notes::Pending() {
    Queue& q = TheQueue();
    std::lock_guard<std::mutex> lock(q.mutex);
    return {q.notes.begin(), q.notes.end()};
}

void Notes::WaitForNew(std::chrono::steady_clock::time_point deadline) {
    Queue& q = TheQueue();
    std::unique_lock<std::mutex> lock(q.mutex);
    const size_t seen = q.notes.size() + q.dropped;
    q.arrived.wait_until(lock, deadline, [&] { return q.notes.size() + q.dropped != seen; });
}

size_t Notes::Dropped() {
    Queue& q = TheQueue();
    std::lock_guard<std::mutex> lock(q.mutex);
    return q.dropped;
}

std::vector<Note> Notes::Screen() {
    Queue& q = TheQueue();
    std::lock_guard<std::mutex> lock(q.mutex);
    return {q.screen.begin(), q.screen.end()};
}

std::string Notes::ScreenJson() {
    json_object* list = json_object_new_array();
    for (const Note& n : Screen()) {
        json_object* note = json_object_new_object();
        json_object_object_add(note, "cmd", json_object_new_string(n.cmd.c_str()));
        json_object_object_add(note, "data",
                               n.numeric ? json_object_new_int64(std::stoll(n.data))
                                         : json_object_new_string(n.data.c_str()));
        json_object_array_add(list, note);
    }
    std::string text = json_object_to_json_string_ext(list, JSON_C_TO_STRING_PLAIN);
    json_object_put(list);
    return text;
}

}  // namespace factorysim
