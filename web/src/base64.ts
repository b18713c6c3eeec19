/** The bytes of a text in Base64; line breaks in it do not count. */
export function bytesOf(base64: string): Uint8Array<ArrayBuffer> {
    const text = atob(base64);
    const bytes = new Uint8Array(text.length);
    for (let i = 0; i < text.length; i += 1) {
        bytes[i] = text.charCodeAt(i);
    }
    return bytes;
}
