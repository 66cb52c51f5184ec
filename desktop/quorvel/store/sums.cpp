// One pass over the calls makes all sums; they are kept in the tables total, day and span.
#include "desktop/quorvel/store/sums.h"

#include <algorithm>

namespace quorvel::store {

void Sums::count(const CallRow& call, std::int64_t sign) {
    const std::int64_t duration = call.duration * sign;
    for (const std::int64_t filter : {std::int64_t{1}, call.kind}) {
        filters[indexOf(filter)].calls += sign;
        filters[indexOf(filter)].duration += duration;
    }
    const auto kind = static_cast<std::size_t>(call.kind - 2);
    DaySums& day = days[call.day];
    day.calls[kind] += sign;
    if (kind < day.durations.size()) day.durations[kind] += duration;
    if (sign > 0) {
        day.first = std::min(day.first, call.date);
        day.last = std::max(day.last, call.date);
    }
    spans[spanOf(call.date)].calls[kind] += sign;
    partyCalls[call.party] += sign;
}

void Sums::countRuns(std::int64_t filter, std::int64_t date, std::int64_t change) {
    if (change == 0) return;
    filters[indexOf(filter)].runs += change;
    spans[spanOf(date)].runs[indexOf(filter)] += change;
}

void SumMaker::see(const CallRow& call) {
    sums_.count(call, 1);
    for (const std::int64_t filter : {std::int64_t{1}, call.kind}) {
        std::optional<CallRow>& newer = newer_[indexOf(filter)];
        if (!newer || !isSameRun(*newer, call)) sums_.countRuns(filter, call.date, 1);
        newer = call;
    }
}

std::int64_t callsOf(Connection& connection) {
    Statement& kept = connection.statement("select calls from total where filter = 1");
    const ResetLater later(kept);
    return kept.step() ? kept.count(0) : 0;
}

std::int64_t daysOf(Connection& connection) {
    Statement& kept = connection.statement("select days from state where one = 1");
    const ResetLater later(kept);
    return kept.step() ? kept.count(0) : 0;
}

Sums readSums(Connection& connection) {
    Sums sums;
    Statement& totals =
        connection.statement("select filter, calls, duration, runs from total where filter between 1 and 4");
    const ResetLater totalsLater(totals);
    while (totals.step()) {
        sums.filters[indexOf(totals.within(0, 1, 4, "a list"))] = {totals.integer(1), totals.integer(2),
                                                                   totals.integer(3)};
    }
    Statement& days = connection.statement(
        "select day, dialled, received, missed, dialled_duration, received_duration, first, last from day order by "
        "day");
    const ResetLater daysLater(days);
    while (days.step()) {
        sums.days[days.integer(0)] = {{days.integer(1), days.integer(2), days.integer(3)},
                                      {days.integer(4), days.integer(5)},
                                      days.integer(6),
                                      days.integer(7)};
    }
    Statement& spans = connection.statement(
        "select span, dialled, received, missed, all_runs, dialled_runs, received_runs, missed_runs from span order by "
        "span");
    const ResetLater spansLater(spans);
    while (spans.step()) {
        sums.spans[spans.integer(0)] = {{spans.integer(1), spans.integer(2), spans.integer(3)},
                                        {spans.integer(4), spans.integer(5), spans.integer(6), spans.integer(7)}};
    }
    return sums;
}

void replaceSums(Connection& connection, const Sums& sums) {
    connection.statement("delete from day").run();
    connection.statement("delete from span").run();
    Statement& day = connection.statement("insert into day values (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
    for (const auto& [number, of] : sums.days) {
        day.bind(1, number).bind(2, of.calls[0]).bind(3, of.calls[1]).bind(4, of.calls[2]);
        day.bind(5, of.durations[0]).bind(6, of.durations[1]).bind(7, of.first).bind(8, of.last).run();
    }
    Statement& span = connection.statement("insert into span values (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8)");
    for (const auto& [number, of] : sums.spans) {
        span.bind(1, number).bind(2, of.calls[0]).bind(3, of.calls[1]).bind(4, of.calls[2]);
        span.bind(5, of.runs[0]).bind(6, of.runs[1]).bind(7, of.runs[2]).bind(8, of.runs[3]).run();
    }
    Statement& total = connection.statement("insert or replace into total values (?1, ?2, ?3, ?4)");
    for (std::int64_t filter = 1; filter <= 4; ++filter) {
        const FilterSums& of = sums.filters[indexOf(filter)];
        total.bind(1, filter).bind(2, of.calls).bind(3, of.duration).bind(4, of.runs).run();
    }
    connection.statement("update state set days = ?1 where one = 1")
        .bind(1, static_cast<std::int64_t>(sums.days.size()))
        .run();
}

Sums makeSums(Connection& connection) {
    SumMaker maker;
    Statement& calls = connection.statement("select " QUORVEL_CALL_COLUMNS
                                            " from call indexed by call_by_date order by date desc, ROWID desc");
    const ResetLater later(calls);
    NewestFirst order;
    while (calls.step()) {
        order.expect(calls);
        maker.see(callRowOf(calls));
    }
    return maker.take();
}

}  // namespace quorvel::store
