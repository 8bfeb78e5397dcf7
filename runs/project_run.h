// A run that documents whole projects: their site, or what is known of them as data.
//
//     const ProjectInputs inputs = findProjects({.paths = {folder}, .results = target});
//     documentProjects(inputs, {.folder = target, ...}, observer);
//
// Tested by tests/cli/project.py.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <ostream>
#include <vector>

#include "base/message.h"
#include "listing/options.h"
#include "runs/project_inputs.h"
#include "runs/read_module.h"
#include "runs/task.h"

namespace tintline {

// What is wanted of projects.
struct ProjectOrder {
  enum class Form : std::uint8_t {
    Site,    // pages; "index.htm" in the folder is the first
    Tables,  // CSV
    Data     // JSON
  };
  Form form = Form::Site;
  std::filesystem::path folder{};    // takes the results
  std::filesystem::path dataFile{};  // takes the data instead
  std::ostream* stream = nullptr;    // likewise
  Reading reading{};
  listing::Options listing{};
  Writing writing = Writing::Changed;
  std::size_t jobs = 1;  // modules at the same time, each on a thread of its own
};

// What a run tells while it goes on: all but the last by any of its threads, several at once.
class ProjectObserver {
 public:
  virtual ~ProjectObserver() = default;

  // False ends the run: nothing more is begun, and what is written stays.
  virtual bool goesOn() { return true; }
  // One more input is read, before any is done.
  virtual void read() {}
  // Of an input, by its index, nothing is left to do.
  virtual void finished(std::size_t input, Outcome outcome) = 0;
  // A result that belongs to no input could not be written.
  virtual void unwritten(const Message& failure) = 0;
  // A page of a module that there is no more; nobody deletes what he did not make.
  virtual void stale(const std::filesystem::path& page) = 0;
};

// The files that belong to no input, each of which a run with that order writes.
std::vector<std::filesystem::path> resultsOf(const ProjectOrder& order);

// The page of an input in a site.
std::filesystem::path pageOf(const Task& task, const ProjectOrder& order);

// True when all inputs were read and all results written. Before anything is written, no target may
// be a file that is read (`overwritten` in runs/task.h).
bool documentProjects(const ProjectInputs& inputs, const ProjectOrder& order,
                      ProjectObserver& observer);

}  // namespace tintline
