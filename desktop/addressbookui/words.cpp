// The words of five languages.
#include "desktop/addressbookui/words.h"

#include <algorithm>
#include <array>

#include "desktop/addressbook/names.h"

namespace addressbookui {
namespace {

/// The languages of the words below, in their order.
constexpr std::array<std::string_view, 5> languages = {"en", "de", "es", "ru", "ar"};

struct Entry {
    Word word;
    const char* texts[languages.size()];
};
constexpr Entry entries[] = {
    {Word::done, {"Done", "Fertig", "OK", "Готово", "تم"}},
    {Word::cancel, {"Cancel", "Abbrechen", "Cancelar", "Отменить", "إلغاء"}},
    {Word::edit, {"Edit", "Bearbeiten", "Editar", "Править", "تحرير"}},
    {Word::ok, {"OK", "OK", "OK", "ОК", "موافق"}},
    {Word::sendMessage, {"Send Message", "Nachricht senden", "Enviar mensaje", "Отправить сообщение", "إرسال رسالة"}},
    {Word::faceTime, {"FaceTime", "FaceTime", "FaceTime", "FaceTime", "FaceTime"}},
    {Word::faceTimeAudio, {"FaceTime Audio", "FaceTime-Audio", "Audio de FaceTime", "FaceTime-аудио", "FaceTime صوتي"}},
    {Word::shareContact,
     {"Share Contact", "Kontakt teilen", "Compartir contacto", "Поделиться контактом", "مشاركة جهة الاتصال"}},
    {Word::contactShared,
     {"Contact Shared", "Kontakt geteilt", "Contacto compartido", "Контакт сохранён в файл", "تمت مشاركة جهة الاتصال"}},
    {Word::cardWrittenTo,
     {"The card was written to %@.", "Die Karte liegt in %@.", "La tarjeta está en %@.", "Карточка записана в %@.",
      "تم حفظ البطاقة في %@."}},
    {Word::cardNotWritten,
     {"Contact Not Shared", "Kontakt nicht geteilt", "No se ha compartido el contacto",
      "Не удалось поделиться контактом", "تعذّرت مشاركة جهة الاتصال"}},
    {Word::addToFavorites,
     {"Add to Favorites", "Zu Favoriten", "Añadir a favoritos", "Добавить в избранное", "إضافة إلى المفضلة"}},
    {Word::removeFromFavorites,
     {"Remove from Favorites", "Aus Favoriten entfernen", "Quitar de favoritos", "Удалить из избранного",
      "إزالة من المفضلة"}},
    {Word::blockCaller,
     {"Block this Caller", "Anrufer blockieren", "Bloquear a esta persona", "Заблокировать абонента",
      "حظر هذا المتصل"}},
    {Word::unblockCaller,
     {"Unblock this Caller", "Anrufer nicht blockieren", "Desbloquear a esta persona", "Разблокировать абонента",
      "إلغاء حظر هذا المتصل"}},
    {Word::blockExplanation,
     {"You will not receive calls or messages from people on the block list.",
      "Von blockierten Personen erhältst du weder Anrufe noch Nachrichten.",
      "No recibirás llamadas ni mensajes de las personas bloqueadas.",
      "Вы не будете получать вызовы и сообщения от заблокированных абонентов.",
      "لن تتلقى مكالمات أو رسائل من الأشخاص المحظورين."}},
    {Word::blockContact,
     {"Block Contact", "Kontakt blockieren", "Bloquear contacto", "Заблокировать контакт", "حظر جهة الاتصال"}},
    {Word::deleteContact,
     {"Delete Contact", "Kontakt löschen", "Eliminar contacto", "Удалить контакт", "حذف جهة الاتصال"}},
    {Word::createNewContact,
     {"Create New Contact", "Neuen Kontakt erstellen", "Crear contacto nuevo", "Создать контакт",
      "إنشاء جهة اتصال جديدة"}},
    {Word::addToExistingContact,
     {"Add to Existing Contact", "Zu Kontakt hinzufügen", "Añadir a contacto existente", "Добавить к контакту",
      "إضافة إلى جهة اتصال حالية"}},
    {Word::newContact, {"New Contact", "Neuer Kontakt", "Nuevo contacto", "Новый контакт", "جهة اتصال جديدة"}},
    {Word::allContacts, {"All Contacts", "Alle Kontakte", "Todos", "Все контакты", "كل جهات الاتصال"}},
    {Word::search, {"Search", "Suchen", "Buscar", "Поиск", "بحث"}},
    {Word::nobodyFound, {"No Contacts", "Keine Kontakte", "Sin contactos", "Нет контактов", "لا توجد جهات اتصال"}},
    {Word::linkedContacts,
     {"Linked Contacts", "Verknüpfte Kontakte", "Contactos vinculados", "Связанные контакты", "جهات الاتصال المرتبطة"}},
    {Word::addPhone, {"add phone", "Telefon hinzufügen", "añadir teléfono", "добавить телефон", "إضافة هاتف"}},
    {Word::addEmail, {"add email", "E-Mail hinzufügen", "añadir correo", "добавить e-mail", "إضافة بريد إلكتروني"}},
    {Word::chooseLabel, {"Label", "Etikett", "Etiqueta", "Метка", "العنوان"}},
    {Word::noName, {"No Name", "Ohne Namen", "Sin nombre", "Без имени", "بلا اسم"}},
    {Word::notSaved,
     {"Contact Not Saved", "Kontakt nicht gesichert", "No se ha guardado el contacto", "Контакт не сохранён",
      "لم يتم حفظ جهة الاتصال"}},
    {Word::noAccess,
     {"Contacts cannot be used because access is denied. Allow it with: quorvelctl contacts allow",
      "Der Zugriff auf Kontakte ist verweigert. Erlaube ihn mit: quorvelctl contacts allow",
      "El acceso a los contactos está denegado. Permítelo con: quorvelctl contacts allow",
      "Доступ к контактам запрещён. Разрешите его: quorvelctl contacts allow",
      "الوصول إلى جهات الاتصال مرفوض. اسمح به بالأمر: quorvelctl contacts allow"}},
};

}  // namespace

std::string say(Word word) {
    const std::string language = contacts::language();
    const auto* at = std::ranges::find(languages, std::string_view(language).substr(0, 2));
    const std::size_t index = at == languages.end() ? 0 : static_cast<std::size_t>(at - languages.begin());
    const auto* found = std::ranges::find(entries, word, &Entry::word);
    return found == std::end(entries) ? std::string() : found->texts[index];
}

std::string say(Word word, std::string_view argument) {
    std::string text = say(word);
    const auto place = text.find("%@");
    return place == std::string::npos ? text : text.replace(place, 2, argument);
}

}  // namespace addressbookui
