// How a group of commands puts itself into the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <memory>

namespace tessel::cli {

struct Streams;

// What the parsed command does; returns the exit status.
using CommandRun = std::function<int(Streams&)>;

// Makes `run` do `action` with what was parsed into `options` when the command is named. The options live as
// long as the command.
template <class Options>
void OnCommand(CLI::App& command, CommandRun& run, std::shared_ptr<Options> options,
               int (*action)(const Options&, Streams&)) {
  command.callback([&run, options = std::move(options), action] {
    run = [options, action](Streams& streams) { return action(*options, streams); };
  });
}

void AddConfigCommands(CLI::App& app, CommandRun& run);
void AddReceivedCommands(CLI::App& app, CommandRun& run);

}  // namespace tessel::cli
