// Requests to the server. Addresses are relative, because the page's address contains the token.

async function check(response) {
    if (!response.ok) {
        throw new Error(await response.text() || response.statusText);
    }
    return response;
}

const withQuery = (path, query) => `${path}?${new URLSearchParams(query)}`;

export async function getJson(path, query = {}) {
    return (await check(await fetch(withQuery(path, query)))).json();
}

export async function postJson(path, order) {
    return (await check(await fetch(path, {method: "POST", body: JSON.stringify(order)}))).json();
}

export async function postFile(path, query, file) {
    return (await check(await fetch(withQuery(path, query), {method: "POST", body: file}))).json();
}

/// Returns a rendered picture with the renderer's name and time.
export async function getPicture(path, query, signal) {
    const response = await check(await fetch(withQuery(path, query), {signal}));
    const blob = await response.blob();
    const bitmap = await createImageBitmap(blob, {colorSpaceConversion: "none"});
    return {
        bitmap,
        milliseconds: Number(response.headers.get("X-Render-Milliseconds")),
        renderer: response.headers.get("X-Renderer"),
    };
}

export const addressOf = withQuery;
