#pragma once

#include <string>
#include <vector>

/// A story of exchanges.txt, told for one channel.
struct Story {
    /// What is done to the unit, in order.
    struct Deed {
        enum class Kind { given, message, event };
        Kind kind;
        std::string text;      ///< a JSON text, or a message with its fields
        bool isBefore = false; ///< what comes of it is not looked at
    };

    std::string title;
    bool fresh = false;           ///< no self test, and the unit not in service
    std::string capability = "0"; ///< what the node has said of itself, where it is not fresh
    std::vector<Deed> deeds;
    std::vector<std::string> steps; ///< as they stand in the table
};

/// All stories for a channel, 1 or 2.
std::vector<Story> storiesOfChannel(int ct);

/// A message as stories write it, "NAME field=value …", in bytes: header and body.
/// @param header what the header's fields are that are not given, "slot=3 ct=1"
std::string bytesOfMessage(const std::string& message, const std::string& header);

/// The name of a message as stories write it.
std::string nameOfMessage(const std::string& message);
