// The session's connection, its one transaction, and the writer that keeps the sums for it.
#include "desktop/quorvel/store/import_session.h"

#include "desktop/quorvel/store/call_store_impl.h"
#include "desktop/quorvel/store/import_session_impl.h"

namespace quorvel::store {

ImportSession::ImportSession(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
ImportSession::ImportSession(ImportSession&&) noexcept = default;
ImportSession& ImportSession::operator=(ImportSession&&) noexcept = default;
ImportSession::~ImportSession() = default;

Result<std::int64_t> ImportSession::add(const NewCall& call) {
    if (!impl_->isOpen()) return impl_->overError();
    if (auto objection = objectionTo(call)) return std::move(*objection);
    return impl_->guardedWork([&] { return impl_->add(call); });
}

Result<bool> ImportSession::contains(const NewCall& call) const {
    if (!impl_->isOpen()) return impl_->overError();
    return impl_->guardedWork([&] { return impl_->contains(call); });
}

Result<Done> ImportSession::beginSource() {
    if (!impl_->isOpen()) return impl_->overError();
    return impl_->guardedWork([&] { return impl_->beginSource(); });
}

Result<bool> ImportSession::claim(const NewCall& call) {
    if (!impl_->isOpen()) return impl_->overError();
    return impl_->guardedWork([&] { return impl_->claim(call); });
}

std::int64_t ImportSession::added() const { return impl_->added(); }

Result<std::int64_t> ImportSession::finish() {
    if (!impl_->isOpen()) return impl_->overError();
    auto result = impl_->guardedWork([&] { return impl_->finish(); });
    impl_->close();
    return result;
}

Result<ImportSession> CallStore::beginImport() {
    return guarded([&] {
        return ImportSession(std::make_unique<ImportSession::Impl>(impl_->importConnection(), impl_->moment()));
    });
}

}  // namespace quorvel::store
