#include "toolkit/check/RoutingLoops.h"

#include <algorithm>
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/strong_components.hpp>
#include <cstdint>
#include <optional>
#include <unordered_map>

namespace toolkit {
namespace {

using orvo::AudioTrack;
using Graph = boost::adjacency_list<boost::vecS, boost::vecS, boost::directedS>;

/// An arrow from each track to each track that it feeds.
class Routing {
public:
    explicit Routing(const orvo::Session& session) : graph_(session.audioTracks.size()) {
        for (std::size_t i = 0; i < session.audioTracks.size(); ++i) {
            places_.emplace(session.audioTracks[i].id, i);
        }
        for (std::size_t i = 0; i < session.audioTracks.size(); ++i) {
            AddFeedsOf(i, session.audioTracks[i]);
        }
    }

    const Graph& Arrows() const { return graph_; }

    bool FeedsItself(std::size_t track) const { return edge(track, track, graph_).second; }

private:
    void AddFeedsOf(std::size_t place, const AudioTrack& track) {
        if (track.outputTrackId > 0) {
            AddFeed(place, track.outputTrackId);
        }
        if (!track.sendList) {
            return;
        }
        for (const std::optional<orvo::SendSlot>& send : track.sendList->slots) {
            if (send && send->sendOutputId >= 0) {
                AddFeed(place, send->sendOutputId);
            }
        }
    }

    void AddFeed(std::size_t from, std::int32_t id) {
        const auto target = places_.find(static_cast<std::uint32_t>(id));
        if (target != places_.end()) {
            add_edge(from, target->second, graph_);
        }
    }

    Graph graph_;
    std::unordered_map<std::uint32_t, std::size_t> places_;
};

}  // namespace

std::vector<RoutingLoop> FindRoutingLoops(const orvo::Session& session) {
    const Routing routing(session);
    std::vector<std::size_t> componentOf(session.audioTracks.size());
    const std::size_t count = strong_components(
        routing.Arrows(), boost::make_iterator_property_map(
                              componentOf.begin(), get(boost::vertex_index, routing.Arrows())));
    std::vector<RoutingLoop> loops(count);
    for (std::size_t track = 0; track < componentOf.size(); ++track) {
        loops[componentOf[track]].push_back(track);
    }
    std::erase_if(loops, [&routing](const RoutingLoop& loop) {
        return loop.size() == 1 && !routing.FeedsItself(loop.front());
    });
    std::ranges::sort(loops);
    return loops;
}

}  // namespace toolkit
