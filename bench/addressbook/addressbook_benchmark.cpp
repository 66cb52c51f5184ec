// Whose a number is among 10,000 contacts, beside formatting that number, both for numbers never seen before and for
// known ones; making the index; reading and writing vCards.
#include <benchmark/benchmark.h>

#include <sstream>
#include <string>
#include <vector>

#include "desktop/addressbook/contact_vcard.h"
#include "desktop/addressbook/number_index.h"
#include "desktop/addressbook/numbers.h"
#include "desktop/addressbook/vcard_reader.h"
#include "desktop/addressbook/vcard_writer.h"

namespace {

using namespace contacts;

/// Two numbers and an e-mail address each.
std::vector<Contact> makeContacts(int count) {
    std::vector<Contact> all(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        Contact& contact = all[static_cast<std::size_t>(i)];
        contact.record = i + 1;
        contact.setText(Property::firstName, "Person");
        contact.setText(Property::lastName, std::to_string(i));
        contact.lists[Property::phone] = {{0, "_$!<Mobile>!$_", "0171 " + std::to_string(1000000 + i), {}},
                                          {1, "_$!<Home>!$_", "+49 30 " + std::to_string(2000000 + i), {}}};
        contact.lists[Property::email] = {{0, "", "person" + std::to_string(i) + "@example.com", {}}};
    }
    return all;
}

/// A number that no call before has had; two out of three are in the book.
std::string nextNumber() {
    static int next = 0;
    next = (next + 1) % 900000;
    return "+49171" + std::to_string(1000000 + next % 15000) +
           (next / 15000 ? ";ext=" + std::to_string(next / 15000) : "");
}

const NumberIndex& index(int count) {
    static const NumberIndex small(makeContacts(100), "DE");
    static const NumberIndex large(makeContacts(10000), "DE");
    return count == 100 ? small : large;
}

void formatANewNumber(benchmark::State& state) {
    setHomeRegion("DE");
    for (auto _ : state) benchmark::DoNotOptimize(formattedNumber(nextNumber()));
}
BENCHMARK(formatANewNumber);

void matchANewNumber(benchmark::State& state) {
    setHomeRegion("DE");
    const NumberIndex& contacts = index(static_cast<int>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(contacts.match(nextNumber()));
}
BENCHMARK(matchANewNumber)->Arg(100)->Arg(10000);

void formatAKnownNumber(benchmark::State& state) {
    setHomeRegion("DE");
    const std::string number = "+491711000005";
    for (auto _ : state) benchmark::DoNotOptimize(formattedNumber(number));
}
BENCHMARK(formatAKnownNumber);

void matchAKnownNumber(benchmark::State& state) {
    setHomeRegion("DE");
    const NumberIndex& contacts = index(static_cast<int>(state.range(0)));
    const std::string number = "+491711000005";
    for (auto _ : state) benchmark::DoNotOptimize(contacts.match(number));
}
BENCHMARK(matchAKnownNumber)->Arg(100)->Arg(10000);

/// As after a start, when no number has been seen.
void makeTheIndex(benchmark::State& state) {
    const auto contacts = makeContacts(10000);
    for (auto _ : state) {
        state.PauseTiming();
        setHomeRegion("US");
        setHomeRegion("DE");
        state.ResumeTiming();
        benchmark::DoNotOptimize(NumberIndex(contacts, "DE"));
    }
}
BENCHMARK(makeTheIndex)->Unit(benchmark::kMillisecond);

std::string cards(int count) {
    std::string text;
    for (Contact& contact : makeContacts(count)) {
        contact.picture = "\xFF\xD8\xFF" + std::string(10000, 'x');
        text += vcard::write(cardOf(contact), vcard::Version::v30);
    }
    return text;
}

void readVCards(benchmark::State& state) {
    const std::string text = cards(100);
    for (auto _ : state) {
        std::istringstream stream(text);
        vcard::Reader reader(stream, [](const vcard::Problem&) {});
        while (const auto card = reader.next()) benchmark::DoNotOptimize(contactOf(*card));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    state.SetItemsProcessed(state.iterations() * 100);
}
BENCHMARK(readVCards);

void writeVCards(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(cards(100));
    state.SetItemsProcessed(state.iterations() * 100);
}
BENCHMARK(writeVCards);

}  // namespace

BENCHMARK_MAIN();
