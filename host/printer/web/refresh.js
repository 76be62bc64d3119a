// Shows the page anew when what it says has changed. It is not loaded every time: what has the focus keeps it.
setInterval(async () => {
  const words = text => new DOMParser().parseFromString(text, 'text/html').querySelector('main').textContent;
  const answer = await fetch(location).catch(() => null);
  if (answer && answer.ok && words(await answer.text()) !== words(document.documentElement.outerHTML))
    location.reload();
}, 2000);
