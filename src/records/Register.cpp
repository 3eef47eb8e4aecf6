#include "records/Register.h"

#include "app/FieldLengths.h"
#include "app/RateType.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

constexpr int digitsOfWhole = 10;
constexpr int digitsOfPrice = 14;

enum CustomerField : std::size_t { Number, Name, Hours, Organisation, Telephone };

Register customers(const QString &table, const QString &prefix)
{
    using Kind = RegisterField::Kind;
    Register made{Register::Kind::Customers, {}, {}, table, prefix + u"id"_s};
    made.fields = {
        {prefix + u"idno"_s, u"Number"_s, u"Num&ber"_s, u"MemberID"_s, FieldLengths::memberNumber},
        {prefix + u"name"_s, u"Name"_s, u"Nam&e"_s, u"MemberName"_s, FieldLengths::name},
        {prefix + u"hour"_s, u"Hours"_s, u"&Hours played"_s, u"MemberHour"_s, digitsOfWhole, Kind::Hours},
        {prefix + u"org"_s, u"Organisation"_s, u"&Organisation"_s, u"MemberOrg"_s, FieldLengths::organisation},
        {prefix + u"tel"_s, u"Telephone"_s, u"&Telephone"_s, u"MemberTel"_s, FieldLengths::telephone},
    };
    made.updated = {Number, Name, Hours, Organisation, Telephone};
    made.listed = {Number, Name, Telephone};
    made.number = Number;
    made.name = Name;
    return made;
}

bool isWholeUpTo31Bits(const QString &value)
{
    static const QRegularExpression digits(u"^[0-9]{1,10}$"_s);
    bool fits = false;
    value.toInt(&fits);
    return fits && digits.match(value).hasMatch();
}

bool isPrice(const QString &value)
{
    static const QRegularExpression price(u"^-?[0-9]{1,10}(\\.[0-9]{1,2})?$"_s);
    return price.match(value).hasMatch();
}

} // namespace

Customer Register::customer(const RegisterRow &row) const
{
    return {rateType, row.values[Number], row.values[Name], row.values[Organisation], row.values[Telephone]};
}

QStringList Register::blankValues() const
{
    QStringList values;
    for (const RegisterField &field : fields)
        values << (field.kind == RegisterField::Kind::Hours ? u"0"_s : QString());
    return values;
}

Register membersRegister()
{
    Register members = customers(u"tbl_member"_s, u"m_"_s);
    members.title = u"Members"_s;
    members.entry = u"member"_s;
    members.rateType = RateType::member;
    return members;
}

Register studentsRegister()
{
    Register students = customers(u"tbl_student"_s, u"st_"_s);
    students.title = u"Students"_s;
    students.entry = u"student"_s;
    students.rateType = RateType::student;
    students.listEnd = u";"_s;
    return students;
}

Register groupRegister(int group)
{
    Register members = customers(u"tbl_specialgroup"_s + QString::number(group), u"m_"_s);
    members.title = u"Special group "_s + QString::number(group);
    members.entry = u"group member"_s;
    members.rateType = RateType::specialGroup(group);
    members.blanks = u"  "_s;
    members.listBlanks = u"  "_s;
    return members;
}

Register catalogue()
{
    using Kind = RegisterField::Kind;
    enum ItemField : std::size_t { Id, ItemName, Type, Key, Price };
    Register items{Register::Kind::Items, u"Items"_s, u"item"_s, u"tbl_item"_s, u"i_id"_s};
    items.fields = {
        {u"i_id"_s, u"Number"_s, u"Num&ber"_s, u"ItemID"_s, digitsOfWhole, Kind::Id},
        {u"i_name"_s, u"Name"_s, u"Nam&e"_s, u"ItemName"_s, FieldLengths::itemName},
        {u"i_type"_s, u"Type"_s, u"T&ype"_s, u"ItemType"_s, FieldLengths::itemType},
        {u"i_key"_s, u"Key"_s, u"&Key or barcode"_s, u"ItemKey"_s, FieldLengths::itemKey},
        {u"i_price"_s, u"Price"_s, u"Pr&ice"_s, u"ItemPrice"_s, digitsOfPrice, Kind::Price},
    };
    items.updated = {ItemName, Type, Key, Price, Id};
    items.listed = {ItemName, Price, Type};
    items.number = Id;
    items.name = ItemName;
    return items;
}

bool isSameValue(const RegisterField &field, const QString &one, const QString &other)
{
    return one == other || (field.kind != RegisterField::Kind::Text && one.toDouble() == other.toDouble());
}

QString faultOf(const RegisterField &field, const QString &value)
{
    if (value.size() > field.maxLength)
        return u"%1 is too long: it has %2 characters, and at most %3 are kept."_s.arg(field.name)
            .arg(value.size())
            .arg(field.maxLength);
    if (value.contains(u'\\'))
        return field.name + u" must not hold a backslash (\\)."_s;
    switch (field.kind) {
    case RegisterField::Kind::Text:
        break;
    case RegisterField::Kind::Hours:
        if (!isWholeUpTo31Bits(value))
            return field.name + u" must be a whole number, such as 12."_s;
        break;
    case RegisterField::Kind::Id:
        if (!isWholeUpTo31Bits(value) || value.toInt() == 0)
            return field.name + u" must be a whole number from 1, such as 12."_s;
        break;
    case RegisterField::Kind::Price:
        if (!isPrice(value))
            return field.name + u" must be a number with a point, such as 2.50."_s;
        break;
    }
    return {};
}
