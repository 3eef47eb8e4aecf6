"""A mail server for tests (FOLDER, MODE, for tls CERTIFICATE and KEY): takes mails on a port of its own, which it prints,
and takes each apart into FOLDER/N: who it went to, its subject and text, and its attached files.
Modes: plain; login (anna, secret); tls (STARTTLS only); silent (says nothing after the first recipient). It refuses nobody@example.org, and senders and mails from refused@example.org."""

import asyncio
import email
import email.policy
import pathlib
import ssl
import sys
import warnings

from aiosmtpd.smtp import SMTP, AuthResult


class Post:
    def __init__(self, folder, mode):
        self.folder, self.mode, self.count = pathlib.Path(folder), mode, 0

    async def handle_RCPT(self, server, session, envelope, address, options):
        if self.mode == "silent":
            await asyncio.sleep(1000)
        if address == "nobody@example.org":
            return "550 Nobody of that name here"
        envelope.rcpt_tos.append(address)
        return "250 OK"

    async def handle_DATA(self, server, session, envelope):
        if envelope.mail_from == "refused@example.org":
            return "554 I do not like this mail"
        self.count += 1
        place = self.folder / str(self.count)
        place.mkdir()
        mail = email.message_from_bytes(envelope.content, policy=email.policy.default)
        (place / "recipients").write_text(" ".join(envelope.rcpt_tos))
        (place / "subject").write_text(mail["Subject"])
        (place / "headers").write_text(f"{mail['From']}|{mail['To']}|{bool(mail['Date'].datetime)}|{mail.defects}")
        (place / "lines").write_text(str(max(len(line) for line in envelope.content.split(b"\r\n"))))
        parts = list(mail.iter_parts())
        (place / "text").write_text(parts[0].get_content())
        for number, part in enumerate(parts[1:]):
            # Taken out by what the part says of itself.
            assert part["Content-Transfer-Encoding"] == "x-uuencode"
            (place / f"{number} {part.get_filename()}").write_bytes(part.get_payload(decode=True))
        return "250 Taken"


def known(server, session, envelope, mechanism, login):
    return AuthResult(success=(login.login, login.password) == (b"anna", b"secret"), handled=False)


async def serve(folder, mode, *files):
    options = {}
    if mode == "login":
        options = {"authenticator": known, "auth_required": True, "auth_require_tls": False}
    if mode == "tls":
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(*files)
        options = {"tls_context": context, "require_starttls": True}
    post = Post(folder, mode)
    server = await asyncio.get_running_loop().create_server(
        lambda: SMTP(post, data_size_limit=None, hostname="localhost", **options), "127.0.0.1", 0)
    print(server.sockets[0].getsockname()[1], flush=True)
    await server.serve_forever()


warnings.simplefilter("ignore")
asyncio.run(serve(*sys.argv[1:]))
